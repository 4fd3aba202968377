// SPDX-License-Identifier: MIT
#include "alerts/rules/AlertHistory.h"

#include "base/AtomicFile.h"
#include "base/CsvWriter.h"
#include "base/FileSystem.h"
#include "base/Log.h"
#include "base/Number.h"
#include "base/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <ctime>
#include <memory>
#include <optional>
#include <unistd.h>
#include <unordered_map>
#include <utility>

namespace vx {

namespace {

constexpr uint32_t kPrivateFile = 0600;

std::string Quoted(std::string_view text) {
    return fmt::format("\"{}\"", EscapeBytes(text.substr(0, CAlertHistory::kMostTextBytes)));
}

bool EndsInTheMiddleOfALine(const COpenFile& file, int64_t size) {
    char last = '\n';
    size_t count = 0;
    return size > 0 && file.Read(static_cast<uint64_t>(size - 1), &last, 1, count) == 0 && count == 1 && last != '\n';
}

int OpenToAppend(const std::string& path, std::unique_ptr<COpenFile>& file, SFileStatus& status) {
    if (const int error = Disk().Open(path, EOpen::Extend, kPrivateFile, file)) return error;
    return file->Status(status) == 0 && status.kind == EFileKind::Regular ? 0 : EINVAL;
}

} // namespace

SAlertFiring FiringOf(const SAlertRecord& record, int64_t firedMs, int64_t awaySinceMs) {
    SAlertFiring out;
    out.firedMs = firedMs;
    out.awaySinceMs = awaySinceMs;
    out.isNews = record.isNews;
    out.symbol = record.symbol;
    out.field = record.fieldName;
    out.condition = record.condition;
    out.value = record.value;
    out.threshold = record.threshold;
    out.bid = record.bid;
    out.ask = record.ask;
    out.last = record.last;
    return out;
}

std::string CAlertHistory::NoteFired(SAlertFiring firing) {
    firing.id = fmt::format("{}-{}-{}", firing.firedMs, getpid(), ++m_count);
    Append(fmt::format("fired {} {} {} {} {} {} {} {} {} {} {} {} end\n", firing.id, firing.firedMs, firing.awaySinceMs,
                       firing.isNews ? 1 : 0, Quoted(firing.condition), Quoted(firing.symbol), Quoted(firing.field),
                       firing.value, firing.threshold, firing.bid, firing.ask, firing.last));
    return std::move(firing.id);
}

void CAlertHistory::NoteSeen(std::string_view id, int64_t atMs) { Append(fmt::format("seen {} {} end\n", id, atMs)); }

void CAlertHistory::NoteEnded(std::string_view id, EFiringEnd end, int64_t atMs, double newThreshold,
                              std::string_view other) {
    std::string line = fmt::format("{} {} {}", EndWord(end), id, atMs);
    if (end == EFiringEnd::Reset || end == EFiringEnd::ResetOther) line += fmt::format(" {}", newThreshold);
    if (end == EFiringEnd::ResetOther) line += ' ' + Quoted(other);
    Append(line + " end\n");
}

void CAlertHistory::Append(std::string line) {
    const int error = TryAppend(line);
    if (error != 0 && !m_failed)
        LogInformation(fmt::format("Alert history: {} cannot be written: {}", FilePath(), ErrorText(error)));
    m_failed = error != 0;
}

int CAlertHistory::TryAppend(std::string& line) const {
    if (const int error = MakeFolders(m_folder)) return error;
    const CFileLock lock(m_folder + "/alert-history.lock", kLockWaitMs);
    std::unique_ptr<COpenFile> file;
    SFileStatus status;
    if (const int error = OpenToAppend(FilePath(), file, status)) return error;
    // Without the lock another program may be about to do the same.
    if (status.signature.size >= kMostFileBytes && lock.IsHeld()) {
        if (const int error = Disk().Rename(FilePath(), OlderFilePath())) return error;
        if (const int error = OpenToAppend(FilePath(), file, status)) return error;
    }
    if (EndsInTheMiddleOfALine(*file, status.signature.size)) line.insert(line.begin(), '\n');
    return WriteAll(*file, line);
}

std::vector<SAlertFiring> CAlertHistory::Read() const {
    constexpr size_t kMostReadBytes = 2 * static_cast<size_t>(kMostFileBytes);
    std::vector<SAlertFiring> out;
    for (const std::string& path : {OlderFilePath(), FilePath()}) {
        SFileImage image;
        if (ReadWholeFile(path, kMostReadBytes, image) == 0) ParseHistory(image.content, out);
    }
    return out;
}

const SAlertFiring* FindFiring(std::span<const SAlertFiring> firings, const SAlertFiring& like) {
    const auto isLike = [&](const SAlertFiring& firing) {
        return firing.symbol == like.symbol && firing.field == like.field && firing.condition == like.condition &&
               firing.threshold == like.threshold && firing.end != EFiringEnd::Reset;
    };
    const auto found = std::find_if(firings.rbegin(), firings.rend(), isLike);
    return found == firings.rend() ? nullptr : &*found;
}

int64_t LastAbsence(std::span<const SAlertFiring> firings) {
    int64_t out = 0;
    for (const SAlertFiring& firing : firings) out = std::max(out, firing.awaySinceMs);
    return out;
}

// The history in text: its file's lines, and what people and spreadsheets read.

namespace {

constexpr std::array kEndWords = {std::pair{std::string_view("dismissed"), EFiringEnd::Dismissed},
                                  std::pair{std::string_view("together"), EFiringEnd::Together},
                                  std::pair{std::string_view("armed"), EFiringEnd::Armed},
                                  std::pair{std::string_view("reset"), EFiringEnd::Reset},
                                  std::pair{std::string_view("other"), EFiringEnd::ResetOther}};

EFiringEnd ReadEndWord(std::string_view word) {
    for (const auto& [known, end] : kEndWords)
        if (known == word) return end;
    return EFiringEnd::Open;
}

/// The words of one line: bare ones end at a blank, quoted ones hold escaped bytes.
class CWords {
public:
    explicit CWords(std::string_view line) : m_rest(line) {}

    std::string_view Next() {
        const size_t blank = m_rest.find(' ');
        const std::string_view word = m_rest.substr(0, blank);
        m_rest.remove_prefix(blank == std::string_view::npos ? m_rest.size() : blank + 1);
        m_whole = m_whole && !word.empty();
        return word;
    }
    std::string NextQuoted() {
        std::string out;
        size_t end = 1;
        while (end < m_rest.size() && m_rest[end] != '"') end += m_rest[end] == '\\' ? 2 : 1;
        m_whole =
            m_whole && m_rest.starts_with('"') && end < m_rest.size() && UnescapeBytes(m_rest.substr(1, end - 1), out);
        m_rest.remove_prefix(std::min(m_rest.size(), end + 2));
        return out;
    }
    int64_t NextInteger() {
        const std::string_view word = Next();
        int64_t out = 0;
        const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), out);
        m_whole = m_whole && error == std::errc{} && end == word.data() + word.size();
        return out;
    }
    double NextNumber() {
        const std::optional<double> out = ReadWholeDouble(Next());
        m_whole = m_whole && out;
        return out.value_or(0);
    }
    /// Whether every word was there and nothing but the line's last one is left.
    bool EndsWell() { return Next() == "end" && m_rest.empty() && m_whole; }

private:
    std::string_view m_rest;
    bool m_whole = true;
};

std::optional<SAlertFiring> ReadFired(std::string_view id, CWords& words) {
    SAlertFiring out;
    out.id = id;
    out.firedMs = words.NextInteger();
    out.awaySinceMs = words.NextInteger();
    out.isNews = words.NextInteger() != 0;
    out.condition = words.NextQuoted();
    out.symbol = words.NextQuoted();
    out.field = words.NextQuoted();
    for (double* number : {&out.value, &out.threshold, &out.bid, &out.ask, &out.last}) *number = words.NextNumber();
    if (!words.EndsWell()) return std::nullopt;
    return out;
}

// Takes over what a line says of a firing: that it was seen, or how it ended. A line that is not whole says nothing.
// Its alert may be reset before its notice comes up: dismissing the notice does not disarm it again.
void ReadOutcome(std::string_view kind, CWords& words, SAlertFiring& firing) {
    SAlertFiring read = firing;
    const int64_t at = words.NextInteger();
    if (kind == "seen") {
        read.seenMs = at;
    } else {
        read.end = ReadEndWord(kind);
        read.endedMs = at;
        const bool isReset = read.end == EFiringEnd::Reset || read.end == EFiringEnd::ResetOther;
        read.newThreshold = isReset ? words.NextNumber() : 0;
        read.other = read.end == EFiringEnd::ResetOther ? words.NextQuoted() : std::string{};
    }
    const bool onlyClosed = read.end == EFiringEnd::Dismissed || read.end == EFiringEnd::Together;
    if (!words.EndsWell() || (firing.end == EFiringEnd::Reset && onlyClosed)) return;
    firing = std::move(read);
}

} // namespace

void ParseHistory(std::string_view text, std::vector<SAlertFiring>& out) {
    std::unordered_map<std::string_view, size_t> places; // The views are of the text, or of ids that do not move again.
    std::vector<std::string> earlier;
    earlier.reserve(out.size());
    for (size_t i = 0; i < out.size(); ++i) places.insert_or_assign(earlier.emplace_back(out[i].id), i);
    for (const std::string_view line : SplitCountingTail(text, '\n')) {
        CWords words(line);
        const std::string_view kind = words.Next();
        if (kind == "fired") {
            const std::string_view id = words.Next();
            if (std::optional<SAlertFiring> firing = ReadFired(id, words)) {
                places.insert_or_assign(id, out.size());
                out.push_back(std::move(*firing));
            }
            continue;
        }
        if (kind != "seen" && ReadEndWord(kind) == EFiringEnd::Open) continue;
        const auto place = places.find(words.Next());
        if (place != places.end()) ReadOutcome(kind, words, out[place->second]);
    }
}

std::string_view EndWord(EFiringEnd end) {
    for (const auto& [word, of] : kEndWords)
        if (of == end) return word;
    return {};
}

std::string LocalTimeText(int64_t ms) {
    if (ms <= 0) return {};
    const auto seconds = static_cast<std::time_t>(ms / 1000);
    std::tm local{};
    if (!localtime_r(&seconds, &local)) return {};
    return fmt::format("{:04d}-{:02d}-{:02d} {:02d}:{:02d}:{:02d}", local.tm_year + 1900, local.tm_mon + 1,
                       local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
}

std::string SpanText(int64_t ms) {
    constexpr int64_t kMinute = 60;
    constexpr int64_t kHour = 60 * kMinute;
    const int64_t seconds = std::max<int64_t>(ms, 0) / 1000;
    if (seconds < kMinute) return fmt::format("{} s", seconds);
    if (seconds < kHour) return fmt::format("{} min {} s", seconds / kMinute, seconds % kMinute);
    return fmt::format("{} h {} min", seconds / kHour, seconds % kHour / kMinute);
}

std::string EndText(const SAlertFiring& firing) {
    const std::string dismissed =
        firing.seenMs == 0 ? "Dismissed" : "Dismissed after " + SpanText(firing.endedMs - firing.seenMs);
    switch (firing.end) {
    case EFiringEnd::Dismissed:
        return dismissed;
    case EFiringEnd::Together:
        return "Dismissed together";
    case EFiringEnd::Armed:
        return "Armed again";
    case EFiringEnd::Reset:
        return firing.isNews ? "Reset" : fmt::format("Reset to {}", firing.newThreshold);
    case EFiringEnd::ResetOther:
        return fmt::format("{}; reset {} to {}", dismissed, firing.other, firing.newThreshold);
    case EFiringEnd::Open:
        break;
    }
    return firing.seenMs == 0 ? "Never seen" : "Seen";
}

std::string HistoryCsv(std::span<const SAlertFiring> firings) {
    CCsvWriter out(',', "\r\n");
    out.Plain("Fired,Symbol,Field,Condition,Threshold,Value,Bid,Ask,Last,While Away,Outcome,Closed");
    out.EndRecord();
    for (const SAlertFiring& firing : firings) {
        out.Plain(LocalTimeText(firing.firedMs));
        for (const std::string& text : {firing.symbol, firing.field, firing.condition}) out.Quoted(text);
        for (const double number : {firing.threshold, firing.value, firing.bid, firing.ask, firing.last})
            out.Plain(firing.isNews ? std::string() : fmt::format("{}", number));
        out.Plain(firing.awaySinceMs != 0 ? "yes" : "no");
        out.Quoted(EndText(firing));
        out.Plain(LocalTimeText(firing.endedMs));
        out.EndRecord();
    }
    return out.Take();
}

} // namespace vx
