// SPDX-License-Identifier: MIT
#pragma once

#include "base/Log.h"
#include "data/catalogue/Catalogue.h"

#include <array>
#include <string_view>

namespace vx {

/// What the text of a setting must look like. The numbers are part of the validation step's interface.
enum class ESettingKind : int {
    Text = 0,     ///< Anything.
    FilePath = 1, ///< Anything.
    Integer = 2,  ///< An optional "-" and one or more decimal digits.
    Boolean = 3,  ///< "true" or "false".
    Number = 4,   ///< What the C library reads as a decimal number, whole.
    Color = 5,    ///< 0xRRGGBB in decimal, "0x" hexadecimal or "0" octal, at most 24 bits.
    List = 6,     ///< Anything: names with ";" between them.
};

/// One application-wide setting as declared in SettingsTable.def.
struct SSetting {
    std::string_view name; ///< In the store, and in reports.
    ESettingKind kind;
    std::string_view defaultText; ///< In the form that the kind accepts, or empty.
    std::string_view purpose;     ///< One sentence for users.
};

// One type for each type of value, so that a setting can only be read and written as what it is.
struct STextSetting : SSetting {};
struct SIntegerSetting : SSetting {};
struct SBooleanSetting : SSetting {};
struct SNumberSetting : SSetting {};
struct SColorSetting : SSetting {};

// kShowGridLines and so on, a constant for each row of the table.
#define ZW_SETTING(constant, type, kind, name, defaultText, purpose)                                                   \
    inline constexpr type constant{{name, ESettingKind::kind, defaultText, purpose}};
#include "settings/SettingsTable.def"
#undef ZW_SETTING

/// Every setting there is, in the order of the table.
inline constexpr std::array kAllSettings{
// NOLINTNEXTLINE(bugprone-macro-parentheses): the name of a constant.
#define ZW_SETTING(constant, type, kind, name, defaultText, purpose) static_cast<const SSetting*>(&constant),
#include "settings/SettingsTable.def"
#undef ZW_SETTING
};

/// The sound list's entries in their order.
inline constexpr std::array kSoundFiles{&kSoundFile1, &kSoundFile2, &kSoundFile3, &kSoundFile4, &kSoundFile5,
                                        &kSoundFile6, &kSoundFile7, &kSoundFile8, &kSoundFile9, &kSoundFile10};

} // namespace vx
