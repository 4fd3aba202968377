// SPDX-License-Identifier: MIT
#include "news/NewsMap.h"

#include "base/Clock.h"
#include "base/Number.h"
#include "base/Text.h"
#include "data/record/SymbolKey.h"
#include "data/text/CellText.h"
#include "news/HeadlineLog.h"

#include <fmt/format.h>
#include <tinyxml2.h>

#include <algorithm>
#include <limits>

namespace vx {

namespace {

constexpr size_t kFrameBytes = 64; ///< More than what stands around the list.
constexpr size_t kMostListBytes = kMostNewsRequestBytes - kFrameBytes;

bool IsCarried(std::string_view symbol) {
    return !symbol.empty() && symbol.size() <= kMostListBytes && std::ranges::none_of(symbol, [](char c) {
        return c == ',' || c == ':' || static_cast<unsigned char>(c) < ' ' || c == '\x7F';
    });
}

} // namespace

std::string NewsCountsRequest(std::string_view symbolList) {
    const SLocalTime today = CClock::Instance().Now();
    return fmt::format("NSC,{},x,,{:04}{:02}{:02},LNewsCounts\r\n", symbolList, today.year, today.month, today.day);
}

std::vector<std::string> NewsCountsRequests(std::span<const std::string> symbols) {
    std::vector<std::string> out;
    std::string list;
    size_t count = 0;
    const auto finish = [&] {
        if (count > 0) out.push_back(NewsCountsRequest(list));
        list.clear();
        count = 0;
    };
    for (const std::string& symbol : symbols) {
        if (!IsCarried(symbol)) continue;
        if (count == kMostNewsSymbols || list.size() + 1 + symbol.size() > kMostListBytes) finish();
        if (count++ > 0) list += ':';
        list += symbol;
    }
    finish();
    return out;
}

void RequestNewsCounts(std::span<const std::string> symbols, CNewsCountsPort& port) {
    for (const std::string& request : NewsCountsRequests(symbols)) port.SendNewsRequest(request);
}

void CNewsMap::AddSymbol(std::string_view symbol) {
    if (IsRegionalName(symbol)) return;
    if (NEWS* news = FindMutable(symbol)) {
        news->fresh = 0;
        news->storyCount = 0;
    } else {
        m_news.try_emplace(std::string(symbol));
    }
}

const NEWS* CNewsMap::Find(std::string_view symbol) const {
    const auto found = m_news.find(symbol);
    return found == m_news.end() ? nullptr : &found->second;
}

NEWS* CNewsMap::FindMutable(std::string_view symbol) {
    const auto found = m_news.find(symbol);
    return found == m_news.end() ? nullptr : &found->second;
}

uint32_t CNewsMap::GetFresh(std::string_view symbol) const {
    const NEWS* news = Find(symbol);
    return news ? news->fresh : 0;
}

void CNewsMap::RaiseCount(std::string_view symbol, int32_t count) {
    NEWS* news = FindMutable(symbol);
    if (news && news->storyCount < count) news->storyCount = count;
}

// The parser knows no entities but the five of XML itself, and refuses what is nested deeper than a hundred elements.
void CNewsMap::ApplyCountsReply(std::string_view xml) {
    if (xml.empty() || xml.size() > kMostReplyBytes || std::ranges::count(xml, '=') > kMostReplyAttributes) return;
    tinyxml2::XMLDocument document;
    if (document.Parse(xml.data(), xml.size()) != tinyxml2::XML_SUCCESS) return;
    const tinyxml2::XMLElement* root = document.FirstChildElement();
    if (!root) return;
    for (const auto* symbol = root->FirstChildElement("symbol"); symbol;
         symbol = symbol->NextSiblingElement("symbol")) {
        const char* name = symbol->Attribute("Name");
        const char* count = symbol->Attribute("StoryCount");
        if (name && count) RaiseCount(name, ReadInt32(count));
    }
}

std::string CNewsMap::ApplyHeadline(std::string_view line) {
    std::string affected;
    const std::optional<SNewsLine> news = ReadNewsLine(line);
    if (!news) return affected;
    for (const std::string_view symbol : SplitCountingTail(news->symbols, ':')) {
        NEWS* record = FindMutable(symbol);
        if (!record) continue;
        record->fresh = 1;
        record->headline = news->headline;
        if (record->storyCount < std::numeric_limits<int32_t>::max()) ++record->storyCount;
        affected.append(symbol) += ',';
    }
    return affected;
}

std::string CNewsMap::CountText(std::string_view symbol) const {
    const NEWS* news = Find(symbol);
    return news && news->storyCount >= 1 ? std::to_string(news->storyCount) : std::string{};
}

ENewsStyle CNewsMap::CountStyle(std::string_view symbol) const {
    return GetFresh(symbol) != 0 ? ENewsStyle::Fresh : ENewsStyle::Plain;
}

std::string_view CNewsMap::HeadlineText(std::string_view symbol) const {
    const NEWS* news = Find(symbol);
    return news ? std::string_view{news->headline}.substr(0, kMostCellText) : std::string_view{};
}

} // namespace vx
