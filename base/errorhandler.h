#pragma once

#include "base/tracekit_export.h"

#include <QString>

#include <atomic>

/// The mask that says what may be traced. Whoever traces tests it first: `if (ErrorHandler::Instance() & traceBit)`.
class TRACEKIT_EXPORT ErrorHandler
{
public:
    /// The bit that allows a trace.
    static constexpr quint32 traceBit = 32;

    /// The one mask of the process.
    static ErrorHandler& Instance();

    ErrorHandler(const ErrorHandler&) = delete;
    ErrorHandler& operator=(const ErrorHandler&) = delete;

    /// The bits of the mask; all are on from the start.
    operator quint32() const { return m_mask.load(std::memory_order_relaxed); }
    /// Replaces the mask, from any thread.
    void SetMask(quint32 mask) { m_mask.store(mask, std::memory_order_relaxed); }

private:
    ErrorHandler() = default;

    std::atomic<quint32> m_mask = ~quint32(0);
};

/// Writes a message with its place in the source to the logging category "velmara", without a look at the mask.
TRACEKIT_EXPORT void _Q_Trace(const QString& message, const QString& sourceFile, unsigned short line);
