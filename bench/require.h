#pragma once

#include <stdexcept>
#include <string>

namespace Velmara::bench {

/// Ends the run where what is measured is not what it should be.
inline void require(bool isMet, const char* statement)
{
    if (!isMet)
        throw std::runtime_error(std::string("does not hold: ") + statement);
}

} // namespace Velmara::bench
