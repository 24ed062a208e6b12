#pragma once

#include "base/exceptions.h"
#include "base/frameinput.h"
#include "frequencystore/kernel/bytes/bytes.h"

#include <optional>

namespace Velmara {

/// The bytes of a file of which a part is in memory.
class Window
{
public:
    /// With a tag, of a frame that may be compressed. Throws TallyException for a file that cannot be opened.
    Window(const QString& path, std::optional<quint32> tag);

    /// Reads what is in memory.
    kernel::BinarySource& in() { return *m_in; }
    /// Makes sure that so many bytes are in memory; false if the file has no more. Throws TallyException for more than
    /// the limit on input.
    bool hold(qint64 bytes);
    /// Reads what must be in memory as a whole, however much that is: does it again after `undo` with more of the file
    /// in memory, where it came to the end of that.
    template <class Read, class Undo> void readWhole(Read read, Undo undo);
    bool atEnd() { return !hold(1); }
    /// The number that is read next, which must be in memory.
    qint32 nextWord() const { return qFromBigEndian<qint32>(m_buffer.data().constData() + m_in->position()); }
    TALLYFORM::InputPlace place() const { return {.source = m_input.path(), .byte = m_start + m_in->position()}; }

private:
    qint64 held() const { return m_buffer.size() - m_in->position(); }
    /// Lets go of what was read, and reads on.
    bool readOn();
    void look(int position);

    TALLYFORM::FrameInput m_input;
    qint64 m_start = 0; ///< of what is in memory
    bool m_isComplete = false;
    QBuffer m_buffer;
    QDataStream m_stream;
    std::optional<kernel::BinarySource> m_in;
};

template <class Read, class Undo> void Window::readWhole(Read read, Undo undo)
{
    for (;;) {
        const int start = m_in->position();
        try {
            read();
            if (m_in->isOk() || m_isComplete)
                return;
        } catch (const TALLYFORM::TallyFormException&) {
            if (m_isComplete || (m_in->isOk() && !m_in->atEnd()))
                throw;
        }
        undo();
        look(start);
        readOn();
    }
}

} // namespace Velmara
