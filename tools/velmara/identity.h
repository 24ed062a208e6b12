#pragma once

#include "commandline.h"
#include "content.h"

/// What makes two entries the same to an operator: equal values of the members that --by names.
class Identity
{
public:
    static void addOption(CommandLine& line);
    /// Throws UsageError for a name that is no member's.
    Identity(const CommandLine& line, const Velmara::RecordDescription& entry);

    /// The values that count, as one text; null if an entry has none, which is the same as no other.
    QString of(const QVector<Velmara::PathValue>& values) const;

private:
    QStringList m_paths;
};

/// What tells an entry from others at a glance: its frequency and what stands beside it.
QString labelOf(const QVector<Velmara::PathValue>& values);
