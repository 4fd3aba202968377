// SPDX-License-Identifier: MIT
#include "vxconnect/common/InputFields.h"

#include "base/Text.h"
#include "base/fields/FundamentalFields.h"
#include "vxconnect/common/WireText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vx::sim {

namespace {

// Names that files of prices have.
constexpr std::pair<std::string_view, EField> kOtherNames[] = {
    {"Ticker", EField::Symbol}, {"Date", EField::LastDate}, {"Time", EField::LastTime}};

// A column shows as a percentage what the line has as a fraction.
EInputKind KindOfColumn(const SUpdateField& field) {
    return field.rule == EParseRule::Percent ? EInputKind::Percent : field.input;
}

using NameMap = std::unordered_map<std::string, SInputField>;

NameMap BuildNames() {
    NameMap out;
    const auto add = [&](std::string_view name, size_t slot, EInputKind kind) {
        out.emplace(PlainName(name), SInputField{name, slot, kind});
    };
    for (size_t i = 0; i < kUpdateFieldCount; ++i) add(kUpdateFields[i].name, i, kUpdateFields[i].input);
    for (size_t i = 0; i < kUpdateFieldCount; ++i)
        for (const SFieldColumn& column : kUpdateFields[i].columns)
            if (column.shows == EColumnShows::Value || column.shows == EColumnShows::Difference)
                if (!column.name.empty()) add(column.name, i, KindOfColumn(kUpdateFields[i]));
    for (const auto& [name, field] : kOtherNames) add(name, static_cast<size_t>(field), FieldInfo(field).input);
    for (size_t row = 0; row < kFundamentalColumnCount; ++row)
        if (const SFundamentalField& field = kFundamentalFields[row]; field.rule != EParseRule::None)
            add(field.name, kUpdateFieldCount + FundamentalSlotOfRow(row), field.input);
    return out;
}

const NameMap& Names() {
    static const NameMap names = BuildNames();
    return names;
}

// How many letters have to be put in, taken out or changed to make one text of the other.
size_t Distance(std::string_view a, std::string_view b) {
    std::vector<size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < a.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < b.size(); ++j)
            diagonal = std::exchange(row[j + 1], std::min({row[j + 1] + 1, row[j] + 1, diagonal + (a[i] != b[j])}));
    }
    return row.back();
}

// Smaller is nearer. One name within the other counts for more than a few letters in common.
size_t Farness(std::string_view a, std::string_view b) {
    const bool within = !a.empty() && (ContainsText(a, b) || ContainsText(b, a));
    return Distance(a, b) * (within ? 1 : 3);
}

} // namespace

std::string PlainName(std::string_view name) {
    std::string out = LowerAscii(name);
    std::erase_if(out, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x80 && !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9') && c != '%';
    });
    return out;
}

const SInputField* FindInputField(std::string_view name) {
    const auto found = Names().find(PlainName(name));
    return found == Names().end() ? nullptr : &found->second;
}

std::string NearestFields(std::string_view name) {
    constexpr size_t kMostLooked = 60, kMost = 3;
    const std::string plain = PlainName(name.substr(0, kMostLooked));
    std::vector<std::pair<size_t, std::string_view>> fields;
    for (const auto& [own, field] : Names()) fields.emplace_back(Farness(plain, own), field.name);
    std::partial_sort(fields.begin(), fields.begin() + kMost, fields.end());
    std::string out;
    for (size_t i = 0; i < kMost; ++i) out += fmt::format("{}\"{}\"", i > 0 ? ", " : "", fields[i].second);
    return out;
}

std::string CFieldNames::Add(std::string_view map) {
    for (const std::string_view pair : SplitCountingTail(map, ',')) {
        const size_t equals = pair.find('=');
        const std::string name = PlainName(pair.substr(0, equals));
        if (equals == std::string_view::npos || name.empty())
            return fmt::format("\"{}\" is not NAME=FIELD, such as Close=Last", Shown(pair));
        const std::string_view wanted = TrimBlanks(pair.substr(equals + 1));
        const SInputField* const field = FindInputField(wanted);
        if (!field && !wanted.empty())
            return fmt::format("\"{}\" is not a field; the nearest are {}", Shown(wanted), NearestFields(wanted));
        m_fields[name] = field;
    }
    return {};
}

CFieldNames::SFound CFieldNames::Find(std::string_view name) const {
    const auto found = m_fields.find(PlainName(name));
    if (found != m_fields.end()) return {found->second, found->second == nullptr};
    return {FindInputField(name), false};
}

} // namespace vx::sim
