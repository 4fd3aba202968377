#pragma once

#include <string>
#include <string_view>

namespace vx {

/// Where the texts of settings are read from and written to.
class CConfigWriterMux {
public:
    /// The stored text of a setting; the default when it was never stored, "Config Error" when it cannot be read.
    virtual std::string ReadString(std::string_view name, std::string_view defaultText) = 0;
    /// Returns whether the text is stored now.
    virtual bool WriteString(std::string_view name, std::string_view text) = 0;

    virtual ~CConfigWriterMux() = default;
};

} // namespace vx
