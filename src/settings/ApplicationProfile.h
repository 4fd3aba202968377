#pragma once

#include <string>
#include <string_view>

namespace vx {

class CRegistry;

/// The application's profile: named texts below one key of the registry, the registry base, which may be changed for
/// the length of an access.
///
/// Owns    nothing: the registry outlives it
/// Thread  GUI thread only
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

} // namespace vx
