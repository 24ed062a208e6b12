#pragma once

/// What a fuzz target is: a file with a run() of its own, and the few things that all of them share.

#include <QByteArray>
#include <QString>

#include <bitset>

namespace Velmara::fuzz {

/// The bytes of an input. The first few choose what is tried, the rest is tried.
class Input
{
public:
    explicit Input(const QByteArray& bytes) : m_rest(bytes) {}

    /// Takes the next byte, which is 0 behind the end.
    quint8 byte();
    quint32 word();
    std::bitset<8> bits() { return byte(); }
    const QByteArray& rest() const { return m_rest; }

private:
    QByteArray m_rest;
};

/// Tries an input; a TallyFormException means that it was refused.
void run(Input input);

/// Does something that may be refused; tells whether it was done.
template <class Action> bool isDone(Action action);

/// Ends the program with the broken promise, unless it was kept.
void require(bool isKept, const char* promise);

/// A file of that content, at the same place each time.
QString scratchFile(const QByteArray& content);
QByteArray contentOf(const QString& path);

} // namespace Velmara::fuzz

#include "base/exceptions.h"

template <class Action> bool Velmara::fuzz::isDone(Action action)
{
    try {
        action();
        return true;
    } catch (const TALLYFORM::TallyFormException&) {
        return false;
    }
}
