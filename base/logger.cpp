#include "base/logger.h"

namespace TALLYFORM {

Logger::~Logger() = default;

} // namespace TALLYFORM
