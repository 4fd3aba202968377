// SPDX-License-Identifier: MIT
#pragma once

#include "base/Registry.h"

#include <string>
#include <string_view>

namespace vx {

class CRegistry;

/// Where the texts of settings are read from and written to.
class CConfigWriterMux {
public:
    /// The stored text of a setting; the default when it was never stored, "Config Error" when it cannot be read.
    virtual std::string ReadString(std::string_view name, std::string_view defaultText) = 0;
    /// Returns whether the text is stored now.
    virtual bool WriteString(std::string_view name, std::string_view text) = 0;

    virtual ~CConfigWriterMux() = default;
};

/// The application's profile: named texts below one key of the registry, the registry base, which may be changed for
/// the length of an access.
class CApplicationProfile {
public:
    CApplicationProfile(CRegistry& registry, std::string_view base) : m_registry(registry), m_base(base) {}

    const std::string& RegistryBase() const { return m_base; }
    /// Returns the base that was in place.
    std::string SetRegistryBase(std::string base);

    /// The text of an entry, or the default when there is no such entry.
    ///
    /// Errors  "Config Error" when the registry cannot be read or the entry holds no text
    std::string ReadString(std::string_view entry, std::string_view defaultText) const;

    /// Errors  false when the value could not be saved; the log has said why
    bool WriteString(std::string_view entry, std::string_view text);

private:
    CRegistry& m_registry;
    std::string m_base;
};

/// Keeps settings in the application's profile, below a registry base of its own: each access makes that base the
/// profile's and puts the previous one back.
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
