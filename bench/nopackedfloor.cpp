/// Stands in where the build found no protocol buffers.

#include "bench/packedfloor.h"

namespace Velmara::bench {

bool PackedFloor::isAvailable() { return false; }
PackedFloor::PackedFloor(const std::vector<XmlToken>&) {}
std::string PackedFloor::write() const { return {}; }
std::shared_ptr<void> PackedFloor::read(const std::string&) { return nullptr; }
Tally PackedFloor::tallyOf(const std::string&) { return {}; }

} // namespace Velmara::bench
