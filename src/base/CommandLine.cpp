// SPDX-License-Identifier: MIT
#include "base/CommandLine.h"

#include "base/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <utility>

namespace vx {

namespace {

constexpr size_t kHelpColumns = 79;

std::string_view WithoutDashes(std::string_view name) {
    return name.substr(std::min(name.find_first_not_of('-'), name.size()));
}

class CReader {
public:
    CReader(std::span<const std::string> arguments, std::span<const SCommandOption> options, EDashes dashes)
        : m_rest(arguments), m_options(options), m_dashes(dashes) {}

    SCommandLine ReadAll() {
        while (!m_rest.empty()) {
            const std::string& argument = Take();
            if (argument.size() < 2 || argument[0] != '-')
                m_out.others.push_back(argument);
            else
                ReadOption(argument);
        }
        return std::move(m_out);
    }

private:
    const std::string& Take() {
        const std::string& first = m_rest.front();
        m_rest = m_rest.subspan(1);
        return first;
    }

    const SCommandOption* Find(const std::string& argument) const {
        constexpr size_t kOneLetter = 2; // "-h"
        const size_t dashes = argument[1] == '-' ? 2 : 1;
        if (dashes == 1 && m_dashes == EDashes::Two && argument.size() > kOneLetter) return nullptr;
        const std::string_view name = std::string_view(argument).substr(dashes, argument.find('=') - dashes);
        const auto found = std::ranges::find_if(
            m_options, [&](const SCommandOption& o) { return CompareNoCase(WithoutDashes(o.name), name) == 0; });
        return found == m_options.end() ? nullptr : &*found;
    }

    void ReadOption(const std::string& argument) {
        const SCommandOption* const option = Find(argument);
        if (!option) return m_out.unknown.push_back(argument);
        const size_t equals = argument.find('=');
        std::optional<std::string> value;
        if (equals != std::string::npos) value = argument.substr(equals + 1);
        if (option->value.empty()) {
            if (value) return Complain(fmt::format("{} takes no value", option->name));
            option->takes.take({});
            return;
        }
        const std::string_view optionBegin = option->leftOut.empty() ? "--" : "-";
        if (!value && !m_rest.empty() && !m_rest.front().starts_with(optionBegin)) value = Take();
        if (!value && !option->leftOut.empty()) value = option->leftOut;
        const std::string& wanted = option->takes.wanted;
        if (!value && wanted.empty()) return m_out.unknown.push_back(argument);
        if (value.value_or("").empty() && !wanted.empty())
            return Complain(fmt::format("{} needs a value: {}", option->name, wanted));
        if (!option->takes.take(*value)) Complain(fmt::format("{}: \"{}\" is not {}", option->name, *value, wanted));
    }

    void Complain(std::string text) {
        if (m_out.error.empty()) m_out.error = std::move(text);
    }

    std::span<const std::string> m_rest;
    std::span<const SCommandOption> m_options;
    EDashes m_dashes;
    SCommandLine m_out;
};

std::string HelpName(const SCommandOption& option) {
    if (option.value.empty()) return fmt::format("  {}", option.name);
    if (!option.leftOut.empty()) return fmt::format("  {} [{}]", option.name, option.value);
    return fmt::format("  {} {}", option.name, option.value);
}

} // namespace

SOptionValue Flag(bool& where) {
    return {{}, [&where](const std::string&) { return where = true; }};
}

SOptionValue TextValue(std::string& where, std::string wanted) {
    return {std::move(wanted), [&where](const std::string& value) {
                where = value;
                return true;
            }};
}

SOptionValue WholeNumber(uint64_t least, uint64_t most, std::function<void(uint64_t)> keep) {
    return {fmt::format("a whole number from {} to {}", least, most),
            [least, most, keep = std::move(keep)](const std::string& text) {
                uint64_t value = 0;
                const auto [end, status] = std::from_chars(text.data(), text.data() + text.size(), value);
                if (status != std::errc() || end != text.data() + text.size() || value < least || value > most)
                    return false;
                keep(value);
                return true;
            }};
}

SCommandLine ReadCommandLine(std::span<const std::string> arguments, std::span<const SCommandOption> options,
                             EDashes dashes) {
    return CReader(arguments, options, dashes).ReadAll();
}

std::string OptionsHelp(std::span<const SCommandOption> options) {
    size_t indent = 0;
    for (const SCommandOption& option : options)
        if (!option.help.empty()) indent = std::max(indent, HelpName(option).size() + 2);
    std::string out;
    for (const SCommandOption& option : options) {
        if (option.help.empty()) continue;
        std::string line = fmt::format("{:<{}}", HelpName(option), indent - 1);
        for (const std::string_view word : SplitCountingTail(option.help, ' ')) {
            if (line.size() + 1 + word.size() > kHelpColumns) {
                out += line + '\n';
                line.assign(indent - 1, ' ');
            }
            fmt::format_to(std::back_inserter(line), " {}", word);
        }
        out += line + '\n';
    }
    return out;
}

} // namespace vx
