// SPDX-License-Identifier: MIT
#include "data/catalogue/CellFormat.h"

#include "base/Number.h"

#include <algorithm>
#include <array>

namespace vx {

namespace {

constexpr std::string_view kTrue = "TRUE";
constexpr std::string_view kFalse = "FALSE";
constexpr std::string_view kLeft = "Left";
constexpr std::string_view kCenter = "Center";
constexpr std::string_view kRight = "Right";

constexpr int kLeastFontPt = 4;
constexpr int kMostFontPt = 96;

void Append(std::string& out, int32_t value) { AppendInteger(out, value); }
void Append(std::string& out, const std::string& value) { out += value; }
void Append(std::string& out, bool value) { out += value ? kTrue : kFalse; }
void Append(std::string& out, ECellAlign value) {
    out += value == ECellAlign::Center ? kCenter : value == ECellAlign::Right ? kRight : kLeft;
}

void Read(std::string_view text, int32_t& value) { value = ReadInt32(text); }
void Read(std::string_view text, bool& value) { value = text == kTrue; }
void Read(std::string_view text, ECellAlign& value) {
    value = text == kCenter ? ECellAlign::Center : text == kRight ? ECellAlign::Right : ECellAlign::Left;
}
void Read(std::string_view text, std::string& value) {
    text = text.substr(0, kMostFontFace);
    if (IsStorableFont(text)) value = text;
}

// The fields of a record in the order of its text: calls visit with a pointer to each member.
template <typename Visit> void ForEachField(Visit&& visit) {
    visit(&SCellFormat::textColour);
    visit(&SCellFormat::backColour);
    visit(&SCellFormat::upColour);
    visit(&SCellFormat::downColour);
    visit(&SCellFormat::unchangedColour);
    visit(&SCellFormat::borderStyle);
    visit(&SCellFormat::cellKind);
    visit(&SCellFormat::reserved);
    visit(&SCellFormat::fontFace);
    visit(&SCellFormat::bold);
    visit(&SCellFormat::italic);
    visit(&SCellFormat::fontSizePt);
    visit(&SCellFormat::alignment);
    visit(&SCellFormat::decimals);
    visit(&SCellFormat::colourByDirection);
}

} // namespace

bool HaveSameFields(const SCellFormat& a, const SCellFormat& b) {
    bool same = true;
    ForEachField([&](auto member) { same = same && a.*member == b.*member; });
    return same;
}

bool IsStorableFont(std::string_view face) {
    return !face.empty() && face.size() <= kMostFontFace && std::ranges::none_of(face, [](char c) {
        return c == ',' || c == ';' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    });
}

int ShownFontSize(const SCellFormat& format) { return std::clamp(format.fontSizePt, kLeastFontPt, kMostFontPt); }

void AppendFormatFields(std::string& out, const SCellFormat& format, const SCellFormat* base) {
    ForEachField([&](auto member) {
        if (!base || format.*member != base->*member) Append(out, format.*member);
        out += ',';
    });
}

void ReadFormatFields(std::string_view text, SCellFormat& format) {
    ForEachField([&](auto member) {
        const size_t comma = text.find(',');
        const std::string_view field = text.substr(0, comma);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
        if (!field.empty()) Read(field, format.*member);
    });
    format.decimals = std::clamp(format.decimals, 0, kMostDecimals);
}

} // namespace vx
