#pragma once

/// What is written into the sources where a mutant differs from them. A mutant is on in all processes whose environment
/// names it.

#include <type_traits>

namespace mutants {

/// Notes that the place was reached.
__attribute__((visibility("default"))) bool isOn(int id);

/// Stays a function of its own, by which a build tells whether it has the mutant in code that runs.
template <int id> [[gnu::noinline]] bool on() { return isOn(id); }

/// The same for functions that the compiler calls as well, where the mutant is off.
template <int id> constexpr bool may()
{
    if (std::is_constant_evaluated())
        return false;
    return on<id>();
}

/// Another value in the place of a literal.
template <int id, class T> constexpr T changed(T value) { return may<id>() ? T(value + 1) : value; }
template <int id, class T> T changedConstant(T value) { return on<id>() ? T(value + 1) : value; }

} // namespace mutants
