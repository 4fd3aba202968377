// SPDX-License-Identifier: MIT
#pragma once

#include "alerts/rules/AlertInfo.h"
#include "alerts/rules/FiredAlert.h"
#include "data/record/ChangeQueue.h"
#include "data/record/SymbolKey.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

class CSymbolRec;
struct SFieldEntry;

/// Which of the two lists of alerts an operation is about.
enum class EAlertMap : uint8_t {
    Live = 0,       ///< Judged on every update, and saved.
    WorkingCopy = 1 ///< What the management dialog edits; empty while it is closed.
};

/// Hears of every change of the live alerts.
class CAlertsObserver {
public:
    virtual ~CAlertsObserver() = default;

    /// The alerts of a symbol changed: added, removed, armed, disarmed or given another threshold. No alert may be
    /// changed from inside.
    ///
    /// Units   armed: how many of them are judged by value now, for CL1DataStore::SetArmedAlerts
    virtual void OnAlertsChanged(std::string_view symbol, int armed) = 0;

    /// Live alerts fired, or were armed again after they had: no edit of the user, yet to be saved. OnAlertsChanged was
    /// called for each symbol before.
    virtual void OnAlertsFiredOrArmed() = 0;
};

/// What a reading of alert text left out.
struct SUnreadAlerts {
    size_t count = 0;
    std::string first; ///< The first such record, at most its first 200 bytes.
};

/// The alerts of one watchlist, by symbol: finds out on each update which ones fire, and hands what fired to the
/// receiver that tells the user.
///
/// Shape   a symbol has a key only while it has alerts; symbols are compared exactly, case included
/// Errors  what names no symbol or alert is ignored unless an operation says otherwise
/// Owns    the alerts; not the receiver or the observer, which outlive it or are set to null
/// Source  docs/file-format.md, "Alerts", for the text
class CAlertsMap {
public:
    /// More alerts of one symbol, or in all, are not taken: only a broken file has so many.
    static constexpr size_t kMostPerSymbol = 1000;
    static constexpr size_t kMostAlerts = 500'000;

    CAlertsMap() = default;
    CAlertsMap(const CAlertsMap&) = delete;
    CAlertsMap& operator=(const CAlertsMap&) = delete;

    void SetReceiver(CFiredAlertReceiver* receiver) { m_receiver = receiver; }
    void SetObserver(CAlertsObserver* observer) { m_observer = observer; }

    // The lists.

    /// Adds an alert after the symbol's others. When one of them has the same field, condition, threshold and zero
    /// flag, that one takes over `enabled` instead and nothing else of the new one.
    ///
    /// Errors  false for an empty symbol and when the lists are full
    bool Add(std::string_view symbol, const A_INFO& alert, EAlertMap map = EAlertMap::Live);
    void Remove(std::string_view symbol, int index, EAlertMap map = EAlertMap::Live);
    /// Removes the live alerts of a symbol.
    void RemoveSymbol(std::string_view symbol);
    void Clear(EAlertMap map);
    /// Empties a list and adds every alert of the other one to it.
    void CopyTo(EAlertMap target);
    /// Arms or disarms an alert of the working copy.
    ///
    /// Errors  std::invalid_argument for an index that the symbol's alerts do not have
    void SetEnabled(std::string_view symbol, int index, bool enabled);

    /// The index of the symbol's alert that counts as the same one (IsSameAlert); -1 when there is none.
    int IndexOf(std::string_view symbol, const A_INFO& alert, EAlertMap map = EAlertMap::Live) const;
    int Count(std::string_view symbol, EAlertMap map = EAlertMap::Live) const;
    /// The alerts of a symbol, none when it has no key. Good until the next change.
    const CAlertArray& Get(std::string_view symbol, EAlertMap map = EAlertMap::Live) const;
    /// The symbols that have alerts, in the order of their bytes.
    std::vector<std::string> Symbols(EAlertMap map = EAlertMap::Live) const;
    bool IsEmpty(EAlertMap map = EAlertMap::Live) const { return Map(map).empty(); }
    /// How many live alerts of a symbol are armed and judged by value. News alerts are not among them.
    int ArmedCount(std::string_view symbol) const;

    // Firing. What becomes of a live alert here becomes of the same alert of the working copy too: the dialog's OK does
    // not arm again what fired while it was open.

    /// Judges the live alerts of a record's symbol by its present values, in order, and fires those that are met. A
    /// record that never received data fires nothing. Costs no allocation while nothing fires.
    ///
    /// Returns the indexes of the alerts that fired, in order
    std::vector<int> Evaluate(const CSymbolRec& record);

    /// Judges one alert, armed or not, by a new value of its field: when it is met, it is disarmed and its record
    /// posted.
    ///
    /// Returns whether it fired
    bool EvaluateFieldAlert(std::string_view symbol, int index, double newValue, double last, double bid, double ask);

    /// News came for these symbols, "," between or after them: fires their armed news alerts.
    void CheckNews(std::string_view symbols, std::string_view headline = {});

    /// Takes "symbol,index,threshold" as a notice posts it: gives that alert the threshold and arms it. Fewer fields
    /// change nothing.
    ///
    /// Errors  false when nothing was reset; std::invalid_argument for an index that the symbol's alerts do not have
    bool ResetFromRecord(std::string_view record);

    /// Arms a live alert again as it is; an index that the symbol's alerts do not have is ignored.
    void Arm(std::string_view symbol, int index);

    // Text.

    /// Appends the live alerts as one line of text without a line end, symbols in the order of their bytes. An alert
    /// whose symbol or sound file holds a line end is left out.
    ///
    /// Returns whether Load reads all of them again as they are: false when a symbol or a sound file holds a separator
    /// of the text, a field has no name, or a threshold has digits beyond the sixth place
    bool Save(std::string& out) const;
    std::string Save() const {
        std::string out;
        Save(out);
        return out;
    }
    /// Adds the alerts that a text describes to the live ones. Records of unknown fields, without a symbol, or beyond
    /// the limits are left out.
    SUnreadAlerts Load(std::string_view text);

private:
    /// Where the value of a field stands: in a slot of the quote, in one of three forms, or elsewhere.
    enum class EStoredAs : uint8_t { QuoteNumber, QuoteInteger, QuoteUnsigned, Elsewhere };

    /// To which side of its threshold a value must be.
    enum class ESide : uint8_t { Equal, Above, Below };

    /// An armed live alert in the form in which it is judged: four of them fill a cache line.
    struct SArmed {
        double threshold;
        uint16_t index;
        uint16_t run; ///< In the first of its field and side: how many of these there are.
        EStoredAs storedAs;
        uint8_t slot;
        uint8_t meetingResults;
        bool noZero;

        ESide Side() const {
            return (meetingResults & kAbove) != 0   ? ESide::Above
                   : (meetingResults & kBelow) != 0 ? ESide::Below
                                                    : ESide::Equal;
        }
    };
    static_assert(sizeof(SArmed) == 16 && kMostPerSymbol <= UINT16_MAX);

    /// The armed ones follow each other by field, side and threshold, the one that a value reaches first in front: a
    /// value that reaches none is compared once a field and side. Empty in the working copy.
    struct SSymbolAlerts {
        CAlertArray alerts;
        std::vector<SArmed> armed;
    };
    using CMap = CSymbolKeyed<SSymbolAlerts>;

    /// The live alerts of a record whose symbol was looked up before; null when it has none.
    struct SFound {
        SRecordIds record;
        uint32_t liveKeys = 0; ///< m_liveKeys of that time; another one makes it void.
        const SSymbolAlerts* alerts = nullptr;
    };
    /// The live map by symbol, as the last save had it.
    struct SOrder {
        uint32_t liveKeys = 0;
        std::vector<const CMap::value_type*> entries;
    };
    static constexpr size_t kFoundRecords = 4096; ///< Power of two; records whose numbers collide share an entry.

    static EStoredAs StoredAs(const SFieldEntry& field);
    static void InsertArmed(SSymbolAlerts& entry, size_t index);
    static const A_INFO& At(const SSymbolAlerts& entry, int index);

    CMap& Map(EAlertMap map) { return m_maps[static_cast<size_t>(map)]; }
    const CMap& Map(EAlertMap map) const { return m_maps[static_cast<size_t>(map)]; }
    size_t& Total(EAlertMap map) { return m_totals[static_cast<size_t>(map)]; }
    const SSymbolAlerts* Find(std::string_view symbol, EAlertMap map) const;
    SSymbolAlerts* Find(std::string_view symbol, EAlertMap map);
    void Erase(std::string_view symbol, EAlertMap map);
    static void Disarm(std::vector<SArmed>& armed, size_t index);
    void Rearm(std::string_view symbol, SSymbolAlerts& entry, size_t index);
    void Become(std::string_view symbol, A_INFO& alert, uint32_t enabled, double value);
    void AnnounceFiredOrArmed();
    void Announce(std::string_view symbol, size_t armed);
    const SSymbolAlerts* FindFor(const CSymbolRec& record);
    template <typename Visit>
    static void ForEachMet(const SSymbolAlerts& entry, const CSymbolRec& record, Visit&& visit);
    const std::vector<const CMap::value_type*>& InOrder() const;
    bool LoadRecord(std::string_view record);

    std::array<CMap, 2> m_maps;
    std::array<size_t, 2> m_totals{};
    uint32_t m_liveKeys = 1; ///< Changes whenever a symbol comes to the live map or goes.
    std::vector<SFound> m_found;
    mutable SOrder m_order;
    CFiredAlertReceiver* m_receiver = nullptr;
    CAlertsObserver* m_observer = nullptr;
};

} // namespace vx
