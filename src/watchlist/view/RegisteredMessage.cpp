// SPDX-License-Identifier: MIT
#include "watchlist/view/RegisteredMessage.h"

#include <map>
#include <string>

namespace vx {

QEvent::Type RegisterMessage(std::string_view name) {
    static std::map<std::string, QEvent::Type, std::less<>> types;
    const auto found = types.find(name);
    if (found != types.end()) return found->second;
    const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    types.emplace(name, type);
    return type;
}

} // namespace vx
