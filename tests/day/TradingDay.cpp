// SPDX-License-Identifier: MIT
#include "day/TradingDay.h"

#include "base/Hash.h"
#include "data/text/CellText.h"
#include "day/PlainList.h"
#include "day/Program.h"
#include "day/UserCommands.h"
#include "support/FakeClock.h"
#include "support/LogEvents.h"
#include "support/MessageBoxes.h"
#include "support/Random.h"
#include "support/SimulatedDisk.h"
#include "watchlist/file/RecoveryFile.h"
#include "watchlist/file/StateFiles.h"
#include "watchlist/fileformat/WatchlistWriter.h"

#include <numeric>

namespace vx::test {

namespace {

using EKind = SDayStep::EKind;

struct SKind {
    const char* name;
    uint32_t chance;
};
constexpr auto kKinds = std::to_array<SKind>(
    {{"paste", 12}, {"insert", 5}, {"delete", 5}, {"move", 5},    {"empty", 4}, {"note", 5},     {"hide", 4},
     {"sort", 4},   {"format", 5}, {"column", 5}, {"option", 3},  {"alert", 7}, {"together", 8}, {"undo", 9},
     {"redo", 4},   {"price", 10}, {"wait", 2},   {"setting", 1}, {"save", 3},  {"reopen", 1},   {"limit", 1},
     {"deaf", 1},   {"break", 1},  {"disk", 3},   {"kill", 2}});
const uint32_t kChances =
    std::transform_reduce(kKinds.begin(), kKinds.end(), 0U, std::plus(), [](const SKind& kind) { return kind.chance; });
static_assert(kKinds.size() == static_cast<size_t>(EKind::Count));

constexpr std::array kLookKeys = {"TrailingRows", "LockedColumns", "ShowToolBar", "Columns",
                                  "Formatting",   "Vx.Columns",    "Vx.Looks",    "Vx.SortAcrossHeadings"};
constexpr std::array kQuoteFields = {"Last", "Last", "Bid", "Ask"};
constexpr std::array kDiskFaults = {SDiskFault::None, SDiskFault::Fail, SDiskFault::FailOn,
                                    SDiskFault::Stop, SDiskFault::Stop, SDiskFault::Shorten};
constexpr const char* kFile = "/lists/day.vxw";
constexpr uint32_t kMostCalls = 60; // Of the disk, from a fault's step to the fault.
constexpr int kMostSeconds = 40;
constexpr int64_t kMostPauseMs = 950; // Between two steps of a user who does not rest.
constexpr int64_t kPromisedMs = 5000; // No kill takes more than the work of so long.
constexpr int64_t kMostRestMs = 4500;
constexpr int64_t kRetryMs = 2 * (CRecoveryKeeper::kRetryMs + kMostPauseMs) + kMostRestMs;
constexpr int64_t kMostIllMs = 8000;

/// The real program on a simulated disk and a simulated feed, and the plain list beside it.
class CWorld {
public:
    CWorld() {
        boxes.answer = EBoxAnswer::Yes;
        for (const char* symbol : kSymbols) feed.market[symbol] = {{"Last", "1"}, {"Bid", "1"}, {"Ask", "2"}};
        disk.Put("/lists/others", "");
        program = std::make_unique<CProgram>(feed);
        m_texts[""].looks = plain.looks = Looks();
        Remember();
    }

    /// What does not agree after the step; empty for nothing.
    std::string Take(const SDayStep& step) {
        m_fault.clear();
        try {
            Live(step);
        } catch (const SStopped&) {
        }
        if (disk.HasStopped()) Restart(step);
        return m_fault;
    }

private:
    CWatchlistDoc& Doc() const { return program->doc; }

    void Live(const SDayStep& step) {
        const bool isEdit = step.kind < EKind::Undo;
        const std::string before = plain.Look() + plain.AlertLook() + plain.looks;
        const size_t steps = Doc().Undo().UndoCount();
        if (m_job && !isEdit) FinishSave();
        plain.Begin();
        Fail(DoAsUser(step, Doc(), plain));
        if (isEdit) {
            const bool made = Doc().Undo().UndoCount() > steps;
            plain.looks = Looks();
            plain.End(made);
            if (!made && before != plain.Look() + plain.AlertLook() + plain.looks) Fail("a change made no step");
        }
        if (m_job) FinishSave();
        Do(step);
        const bool isSettled = step.c % 4 != 0;
        if (isSettled) HearFeed();
        Compare(isSettled);
        Remember();
        clock.elapsedMs += 50 + step.c % (kMostPauseMs - 50);
        KeepRecovery(false);
        if (clock.elapsedMs > m_healMs) InjectFault({});
    }

    // What is no edit.
    void Do(const SDayStep& step) {
        switch (step.kind) {
        case EKind::Price:
            return feed.Set(kSymbols[step.a % kSymbols.size()], kQuoteFields[step.c % kQuoteFields.size()],
                            1 + static_cast<int>(step.b % 49));
        case EKind::Wait:
            clock.elapsedMs += step.a % kMostRestMs;
            return;
        case EKind::Setting:
            return Store(static_cast<int>(step.a % 1000));
        case EKind::Save:
            m_job = program->file.BeginSave(program->file.Path().empty() ? kFile : "", {});
            m_texts[m_job->text] = plain;
            m_savingMs = clock.elapsedMs;
            if (step.b % 2 == 0) FinishSave(); // Else after the next edit.
            return;
        case EKind::Reopen:
            return Reopen();
        case EKind::Limit:
            feed.limit = 1 + step.a % 6;
            return;
        case EKind::Deaf:
            feed.deaf = 1 + static_cast<int>(step.a % 6);
            feed.cuts = step.b % 2 == 0;
            return;
        case EKind::Break:
            program->Hear(kAdminSocket, feed.StatusLine("Not Connected"));
            program->Hear(kLevel1Socket, "S,IP,127.0.0.1,5009");
            return feed.Summarise();
        case EKind::Disk:
            m_healMs = clock.elapsedMs + kMostIllMs;
            return InjectFault({kDiskFaults[step.a % kDiskFaults.size()], static_cast<int>(step.b % kMostCalls),
                                step.c % 2 == 0 ? ENOSPC : EIO});
        case EKind::Kill:
            if (step.a % 4 == 0) KeepRecovery(true);
            return Restart(step);
        default:
            return;
        }
    }

    void Fail(const std::string& fault) {
        if (m_fault.empty()) m_fault = fault; // What follows from it does not matter.
    }

    // The disk. A call that fails on purpose excuses what failed by it, and what is on disk only in part.

    void InjectFault(const SDiskFault& fault) {
        m_injected = fault;
        disk.Inject(fault);
    }
    bool HasFailed(int callsBefore) const {
        if (disk.HasStopped()) return true;
        if (m_injected.what == SDiskFault::None || m_injected.what == SDiskFault::Shorten) return false;
        return disk.Calls() > m_injected.call &&
               (m_injected.what == SDiskFault::FailOn || callsBefore <= m_injected.call);
    }

    void FinishSave() {
        SSaveJob job = *std::exchange(m_job, std::nullopt);
        const int calls = disk.Calls();
        const std::set<std::string> former = m_files;
        const std::string old = disk.Content(kFile).value_or("");
        m_files.insert(job.text);
        CWatchlistFile& file = program->file;
        SFileResult result = file.Saver().Save(job);
        if (result.outcome == EFileOutcome::ChangedOnDisk && m_isOther) {
            job.consent.overwriteChanged = true;
            result = file.Saver().Save(job);
        }
        file.EndSave(job, result);
        const bool excused = HasFailed(calls);
        if (!result.IsDone()) {
            m_files = former;
            if (!excused) Fail("the save failed: " + result.error);
            return;
        }
        if (std::exchange(m_isOther, false) && !job.consent.overwriteChanged && !excused)
            Fail("what the document does not know of was replaced unasked");
        if (disk.Content(kFile) != job.text) Fail("a save that was done is not in the file");
        Remember();
        KeepRecovery(false);
        if (excused) return;
        m_files = {job.text};
        m_promisedMs = std::max(m_promisedMs, m_savingMs);
        if (disk.Names("/lists").size() != 2) Fail("a save left something beside the file");
        const std::vector<SBackup> backups = file.Backups();
        if (!old.empty() && old != job.text && (backups.empty() || disk.Content(backups.front().path) != old))
            Fail("a save kept no backup");
    }

    void Reopen() {
        const int calls = disk.Calls();
        if (program->file.Path().empty()) {
            Doc().NewDocument();
            program->file.Forget();
            plain = m_texts[""];
        } else if (program->file.Open(kFile).IsDone()) {
            plain = m_texts.at(disk.Content(kFile).value());
        } else {
            if (!HasFailed(calls)) Fail("the file could not be opened");
            return;
        }
        m_isOther = false;
        plain.Reopen();
        Remember();
        m_promisedMs = clock.elapsedMs;
        KeepRecovery(false);
    }

    void Store(int width) {
        const int calls = disk.Calls();
        const std::set<int> former = m_widths;
        m_widths.insert(width);
        const bool done = program->settings.WriteInteger(kRectWidth, width);
        if (!HasFailed(calls))
            m_widths = {width};
        else if (!done)
            m_widths = former;
        if (!done && !HasFailed(calls)) Fail("a setting was not stored");
    }

    void KeepRecovery(bool atOnce) {
        const int calls = disk.Calls();
        if (atOnce) program->keeper.KeepNow({});
        program->keeper.Poll({}, clock.elapsedMs);
        program->keeper.Flush();
        if (disk.Calls() > calls) m_isKept = !HasFailed(calls);
        if (HasFailed(calls)) m_failedMs = clock.elapsedMs;
        if (program->keeper.HasFailed()) {
            if (m_isKept) Fail("unsaved changes were not kept");
            if (clock.elapsedMs - m_failedMs > kRetryMs) Fail("what could not be kept was not tried again");
            return;
        }
        const int64_t fromMs = clock.elapsedMs - (atOnce ? 0 : kPromisedMs + 2 * kMostPauseMs);
        m_keptMs = std::max(m_keptMs, fromMs);
        if (m_isKept) m_promisedMs = std::max(m_promisedMs, fromMs);
    }

    // The process dies, and perhaps the power with it. What comes back is what was saved, or a promised state since.
    void Restart(const SDayStep& step) {
        const std::string path = program->file.Path();
        const bool hadFailed = std::exchange(m_failedMs, -1) >= 0 || disk.HasStopped();
        InjectFault({SDiskFault::Stop, 0, 0});
        program.reset();
        m_job.reset();
        const bool powerLost = step.b % 2 == 0;
        if (powerLost)
            disk.LosePower(step.c % (disk.JournalSize() + 1));
        else
            disk.Restart();
        InjectFault({});
        program = std::make_unique<CProgram>(feed);
        CheckFiles(powerLost);
        std::vector<SRecovery> found = FindRecoveries(CProgram::kStateFolder);
        for (const std::string& name : disk.Names(RecoveryFolder(CProgram::kStateFolder)))
            if (name.starts_with('.')) Fail("what was begun stays beside the recoveries");
        bool isFound = false;
        for (; !found.empty() && !isFound; found.pop_back()) {
            program->file.OpenRecovered(found.back());
            const bool isOurs = found.back().originalPath == path;
            isFound = isOurs && IsPromised(powerLost);
            if (isOurs && !isFound && !powerLost && !hadFailed) Fail("an old recovery is offered");
            if (isFound)
                program->keeper.Adopt(found.back());
            else
                DiscardRecovery(found.back());
        }
        for (const SRecovery& other : found) DiscardRecovery(other);
        if (!isFound) {
            program->file.Forget();
            Doc().NewDocument();
            if (!path.empty() && !program->file.Open(kFile).IsDone()) Fail("the file could not be opened");
            if (!IsPromised(powerLost))
                Fail(fmt::format("after a kill there is no promised state: {} {}", Look(), AlertLook()));
        }
        m_isOther = !path.empty() && program->file.KnownHash() != ContentHash(disk.Content(kFile).value_or(""));
        if (disk.JournalSize() == 0) m_history.clear();
        Remember();
        HearFeed();
        Remember();
    }
    // Whether the document is in a state that may come back; the plain list is then too.
    bool IsPromised(bool powerLost) {
        const std::string look = Look(), alerts = AlertLook(), looks = Looks();
        const int64_t promisedMs = powerLost ? m_promisedMs : std::max(m_promisedMs, m_keptMs);
        int64_t replacedMs = clock.elapsedMs;
        for (auto past = m_history.rbegin(); past != m_history.rend() && replacedMs >= promisedMs; ++past) {
            CPlainList read = past->second;
            read.Reopen();
            if (read.Look() == look && read.AlertLook() == alerts && read.looks == looks) {
                plain = read;
                return true;
            }
            replacedMs = past->first;
        }
        return false;
    }
    // What a kill and a power cut left.
    void CheckFiles(bool powerLost) {
        const std::string text = disk.Content(kFile).value_or("");
        if (!m_files.contains(text)) Fail("what is in the file was never saved, or not last");
        const int width = program->settings.ReadInteger(kRectWidth);
        if (!m_widths.contains(width)) Fail("a setting was lost");
        if (disk.JournalSize() == 0) {
            m_files = {text};
            m_widths = {width};
        }
        std::vector<double> kept;
        for (const SAlertFiring& firing : program->history.Read()) kept.push_back(firing.threshold);
        std::ranges::sort(kept);
        std::ranges::sort(m_firings);
        if (!powerLost && !std::ranges::includes(kept, m_firings)) Fail("the history lost an alert that fired");
        m_firings = kept;
    }

    // The feed. The program hears all that was said, asks, and is answered, until there is silence.
    void HearFeed() {
        std::vector<double> fired;
        const int calls = disk.Calls();
        program->fired.clear();
        feed.missed = false;
        program->Turn();
        HearLines(fired);
        const CSymbolLimitQueue& limited = program->LimitedSymbols();
        for (int second = 0; second < kMostSeconds; ++second) {
            program->Hear(kAdminSocket, feed.StatusLine("Connected"));
            const bool cuts = std::exchange(feed.cuts, false); // A watch that goes out in part here is given up.
            program->Hear(kLevel1Socket, "T,20240131 09:30:05");
            feed.cuts = cuts;
            HearLines(fired);
            if (limited.Pending().empty() || feed.watched.size() >= feed.limit || feed.missed) break;
        }
        program->Turn();
        std::ranges::sort(fired);
        std::ranges::sort(program->fired);
        if (program->fired != fired) Fail("other alerts fired");
        if (!HasFailed(calls)) m_firings.insert(m_firings.end(), fired.begin(), fired.end());
    }
    void HearLines(std::vector<double>& fired) {
        while (!feed.lines.empty()) {
            const CSimulatedFeed::SLine line = feed.lines.front();
            feed.lines.pop_front();
            program->Hear(kLevel1Socket, line.text);
            if (line.rejects) plain.Reject(line.symbol);
            if (line.rejects || !plain.Watched().contains(line.symbol)) continue;
            CSimulatedFeed::Quote& heard = feed.heard[line.symbol];
            for (const auto& [field, value] : line.quote) heard[field] = value;
            if (!heard.contains("Last")) continue;
            for (const double above : plain.Price(line.symbol, std::stod(heard["Last"]))) fired.push_back(above);
        }
    }

    // Each row's symbol is watched or waits for room, no other one is, and its record holds what was heard of it.
    void CompareFeed() {
        const std::set<std::string> wanted = plain.Watched();
        const CSymbolLimitQueue& limited = program->LimitedSymbols();
        for (const std::string& symbol : feed.watched)
            if (!wanted.contains(symbol) && !feed.left.contains(symbol)) Fail(symbol + " is watched for no row");
        for (const std::string& symbol : limited.Pending())
            if (!wanted.contains(symbol)) Fail(symbol + " waits for room and is in no row");
        if (!feed.missed) {
            for (const std::string& symbol : wanted)
                if (!feed.watched.contains(symbol) && !limited.Has(symbol)) Fail(symbol + " is not watched");
            if (!limited.Pending().empty() && feed.watched.size() < feed.limit) Fail("there is room for more");
        }
        for (const auto& [symbol, quote] : feed.heard)
            for (const auto& [field, value] : quote) {
                const CL1SymbolRec* record = program->store.FindSymbol(symbol);
                if (wanted.contains(symbol) && (!record || CellNumber(*record, *FindField(field)) != std::stod(value)))
                    Fail(fmt::format("{} of {} is not {}", field, symbol, value));
            }
    }

    std::string Look() {
        std::string out;
        const std::vector<int> hidden = Doc().HiddenRows();
        const int last = std::max({Doc().LastUsedRow(), Doc().Notes().LastRow(), hidden.empty() ? 0 : hidden.back()});
        for (int row = 1; row <= last; ++row) {
            const std::string_view note = Doc().Notes().Get(row), rejected = Doc().RejectedSymbol(row);
            if (!rejected.empty())
                out += fmt::format("!{}", rejected);
            else if (Doc().RowKind(row) == ERowKind::Annotation)
                out += fmt::format("#{}", Doc().AnnotationText(row));
            else
                out += Doc().RowSymbol(row);
            out += fmt::format("{}{}{}|", note.empty() ? "" : "~", note, Doc().IsRowHidden(row) ? "^" : "");
        }
        return out;
    }
    /// The lines of the file that tell of columns, formats and options.
    std::string Looks() const {
        std::string out;
        const std::string text = WriteWatchlistText(Doc(), {});
        for (size_t begin = 0; begin < text.size();) {
            const size_t end = text.find("\r\n", begin);
            const std::string line = text.substr(begin, end - begin);
            if (std::ranges::count(kLookKeys, line.substr(0, line.find('='))) != 0) out += line + "\n";
            begin = end + 2;
        }
        return out;
    }
    std::string AlertLook() {
        std::string out;
        for (const char* symbol : kSymbols)
            for (const A_INFO& alert : Doc().Alerts().Get(symbol))
                out += fmt::format("{}>{}{};", symbol, alert.value, alert.enabled != 0 ? "" : " off");
        return out;
    }

    void Compare(bool isSettled) {
        if (isSettled) CompareFeed();
        if (!m_fault.empty()) return;
        if (Look() != plain.Look())
            Fail(fmt::format("rows\n  {}\n  {}", Look(), plain.Look()));
        else if (AlertLook() != plain.AlertLook())
            Fail(fmt::format("alerts\n  {}\n  {}", AlertLook(), plain.AlertLook()));
        else if (Looks() != plain.looks)
            Fail(fmt::format("columns, formats, options\n  {}\n  {}", Looks(), plain.looks));
        else if (Doc().Undo().UndoCount() != plain.UndoCount())
            Fail(fmt::format("steps: {} and {}", Doc().Undo().UndoCount(), plain.UndoCount()));
        else if (!boxes.shown.empty() && boxes.shown.back().icon == EBoxIcon::Stop)
            Fail("an error was told: " + boxes.shown.back().text);
    }
    void Remember() {
        m_history.emplace_back(clock.elapsedMs, plain);
        if (m_history.size() > 400) m_history.erase(m_history.begin(), m_history.begin() + 200);
    }

    CSimulatedDisk disk;
    CFakeClock clock;
    CLogEvents log{"Off"};
    CMessageBoxes boxes;
    CSimulatedFeed feed;
    std::unique_ptr<CProgram> program;
    CPlainList plain;
    std::vector<std::pair<int64_t, CPlainList>> m_history;
    int64_t m_promisedMs = 0; ///< Nothing that was replaced before may come back.
    int64_t m_keptMs = 0;     ///< The same while the power stays on.
    bool m_isKept = true;     ///< The recovery file is on disk as it was last written.
    int64_t m_failedMs = -1;  ///< When it could not be written or removed; -1: always could.

    std::optional<SSaveJob> m_job; ///< A save that another thread is about to carry out.
    int64_t m_savingMs = 0;
    std::map<std::string, CPlainList> m_texts; ///< What was saved, and the list that it is.
    std::set<std::string> m_files = {""};      ///< What may be in the file; empty for none.
    bool m_isOther = false;                    ///< The file has a content that the document does not know of.
    std::set<int> m_widths = {0};              ///< What may be stored.
    std::vector<double> m_firings;             ///< What must be in the history.
    SDiskFault m_injected;
    int64_t m_healMs = 0;
    std::string m_fault;
};

} // namespace

Day MakeDay(uint64_t seed, int steps) {
    CRandom random(seed);
    Day day;
    for (int i = 0; i < steps; ++i) {
        size_t kind = 0;
        for (uint32_t chance = random.Below(kChances); chance >= kKinds[kind].chance;) chance -= kKinds[kind++].chance;
        const auto number = [&] { return static_cast<uint32_t>(random.Next() >> 40); };
        day.push_back({static_cast<EKind>(kind), number(), number(), number()});
    }
    return day;
}

std::string LiveThrough(const Day& day) {
    CWorld world;
    for (size_t i = 0; i < day.size(); ++i)
        if (const std::string fault = world.Take(day[i]); !fault.empty())
            return fmt::format("step {} ({}): {}", i + 1, kKinds[static_cast<size_t>(day[i].kind)].name, fault);
    return {};
}

std::string Shortest(Day day) {
    for (size_t piece = std::max<size_t>(day.size() / 2, 1), length = 0; piece > 1 || length != day.size();) {
        length = day.size();
        for (size_t at = 0; at < day.size();) {
            Day shorter = day;
            const auto begin = shorter.begin() + static_cast<std::ptrdiff_t>(at);
            shorter.erase(begin, begin + static_cast<std::ptrdiff_t>(std::min(piece, shorter.size() - at)));
            if (LiveThrough(shorter).empty())
                at += piece;
            else
                day = std::move(shorter);
        }
        piece = std::max<size_t>(piece / 2, 1);
    }
    std::string out;
    for (const SDayStep& step : day)
        out += fmt::format("  {} {} {} {}\n", kKinds[static_cast<size_t>(step.kind)].name, step.a, step.b, step.c);
    return out + LiveThrough(day);
}

} // namespace vx::test
