#pragma once

#include "base/RegistryPaths.h"
#include "settings/ConfigWriterMux.h"

namespace vx {

class CApplicationProfile;

/// Keeps settings in the application's profile, below a registry base of its own: each access makes that base the
/// profile's and puts the previous one back.
///
/// Owns    nothing: the profile outlives it
class CConfigWriter final : public CConfigWriterMux {
public:
    explicit CConfigWriter(CApplicationProfile& profile, std::string_view registryBase = kApplicationSettingsKey)
        : m_profile(profile), m_registryBase(registryBase) {}

    std::string ReadString(std::string_view name, std::string_view defaultText) override;
    bool WriteString(std::string_view name, std::string_view text) override;

private:
    CApplicationProfile& m_profile;
    const std::string m_registryBase;
};

} // namespace vx
