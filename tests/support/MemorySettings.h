// SPDX-License-Identifier: MIT
#pragma once

#include "settings/ConfigWriter.h"

#include <map>
#include <string>
#include <string_view>

namespace vx::test {

/// Settings that are nowhere but in the test.
class CSettingsInMemory final : public CConfigWriterMux {
public:
    std::string ReadString(std::string_view name, std::string_view defaultText) override {
        const auto found = texts.find(name);
        return std::string(found == texts.end() ? defaultText : std::string_view(found->second));
    }
    bool WriteString(std::string_view name, std::string_view text) override {
        texts.insert_or_assign(std::string(name), std::string(text));
        return true;
    }
    std::map<std::string, std::string, std::less<>> texts;
};

} // namespace vx::test
