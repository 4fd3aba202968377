#include "settings/ConfigWriter.h"

#include "settings/ApplicationProfile.h"

#include <utility>

namespace vx {

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
