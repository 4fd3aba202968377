#pragma once

#include <string>

namespace vx {

class CRegistry;
class CSettings;

/// The folder of the log, from the start-up key. A missing path, or one that is no text, is replaced in the registry
/// by the default, UserStateFolder() + "/log".
///
/// Shape   empty when the user stored an empty path: no log file is wanted
std::string ReadLogPath(CRegistry& registry);

/// Puts the stored list of categories into force; a name that is no category gives one log line and is ignored.
void ApplyLogCategories(const CSettings& settings);

} // namespace vx
