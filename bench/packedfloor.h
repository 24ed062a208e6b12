#pragma once

/// The floor of packed binary and of memory: protocol buffers with the same members.

#include "bench/floors.h"

#include <memory>

namespace Velmara::bench {

class PackedFloor
{
public:
    /// Whether the build found protocol buffers; without them no other member is of use.
    static bool isAvailable();

    /// Fills a message with what a document holds.
    explicit PackedFloor(const std::vector<XmlToken>& tokens);

    std::string write() const;
    static std::shared_ptr<void> read(const std::string& bytes);

    /// What the bytes hold when they are read again.
    static Tally tallyOf(const std::string& bytes);

private:
    std::shared_ptr<void> m_list;
};

} // namespace Velmara::bench
