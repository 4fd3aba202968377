#include "settings/ConfigLogger.h"

#include "base/Log.h"

namespace vx {

void CConfigLogger::Report(std::string_view text) { LogInformation(text); }

} // namespace vx
