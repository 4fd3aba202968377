#include "settings/ApplicationProfile.h"

#include "base/Registry.h"
#include "settings/ValidateSetting.h"

#include <utility>

namespace vx {

std::string CApplicationProfile::SetRegistryBase(std::string base) { return std::exchange(m_base, std::move(base)); }

std::string CApplicationProfile::ReadString(std::string_view entry, std::string_view defaultText) const {
    const std::optional<SRegistryValue> value = m_registry.Read(m_base, entry);
    if (value) return value->kind == ERegistryKind::Text ? value->text : std::string(kConfigError);
    return std::string(m_registry.IsReadable() ? defaultText : kConfigError);
}

bool CApplicationProfile::WriteString(std::string_view entry, std::string_view text) {
    return m_registry.WriteText(m_base, entry, text);
}

} // namespace vx
