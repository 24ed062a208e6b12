#pragma once

namespace TALLYFORM {

/// What kind of report an object is part of; the records of the frequency store are of no such kind.
enum class ObjectTypes { None };

} // namespace TALLYFORM
