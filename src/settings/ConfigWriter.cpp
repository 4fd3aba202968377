// SPDX-License-Identifier: MIT
#include "settings/ConfigWriter.h"

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

namespace {

/// Makes a base the profile's for as long as it lives.
class CBaseChange {
public:
    CBaseChange(CApplicationProfile& profile, const std::string& base)
        : m_profile(profile), m_previous(profile.SetRegistryBase(base)) {}
    CBaseChange(const CBaseChange&) = delete;
    CBaseChange& operator=(const CBaseChange&) = delete;
    ~CBaseChange() { m_profile.SetRegistryBase(std::move(m_previous)); }

private:
    CApplicationProfile& m_profile;
    std::string m_previous;
};

} // namespace

std::string CConfigWriter::ReadString(std::string_view name, std::string_view defaultText) {
    const CBaseChange change(m_profile, m_registryBase);
    return m_profile.ReadString(name, defaultText);
}

bool CConfigWriter::WriteString(std::string_view name, std::string_view text) {
    const CBaseChange change(m_profile, m_registryBase);
    return m_profile.WriteString(name, text);
}

} // namespace vx
