#pragma once

#include "vxconnect/common/Feed.h"
#include "vxconnect/common/Source.h"
#include "vxconnect/data/DataRecord.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vx::sim {

/// A feed of records whose values come from outside: a user's own data or a recording. It has no market of its own, and
/// its symbols are found in any case of their letters A to Z.
class CDataFeed final : public CFeed {
public:
    static constexpr size_t kMaxRecords = 100'000;

    /// The clock's text is asked for whenever it is told.
    CDataFeed(uint32_t limit, std::function<std::string()> clock) : CFeed(limit), m_clock(std::move(clock)) {}

    std::optional<SymbolIndex> Find(std::string_view symbol) override;
    std::string FundamentalLine(SymbolIndex index, std::string_view symbol) override {
        return m_records[index]->FundamentalLine(symbol);
    }
    std::string ClockText() const override { return m_clock(); }
    bool MayCome() const override { return m_growing; }
    /// New symbols may come at any time.
    void SetGrowing() { m_growing = true; }

    /// The record of a symbol, made when there is none yet; nothing when there are kMaxRecords others, or one of the
    /// same symbol in other letters.
    std::optional<SymbolIndex> Add(std::string_view symbol);
    /// Why a symbol has no record, in words.
    std::string WhyNone(std::string_view symbol) const;
    bool IsFull() const { return m_records.size() == kMaxRecords; }
    CDataRecord& Record(SymbolIndex index) { return *m_records[index]; }
    size_t RecordCount() const { return m_records.size(); }
    /// Tells those who watch a record what changed in it.
    void Changed(SymbolIndex index, const SUpdate& update);

    uint64_t DirectoryVersion() const { return m_records.size() + m_factChanges; }
    void ForEachSymbol(const std::function<bool(const SDirectoryEntry&)>& visit) const;

protected:
    std::unique_ptr<SWatched> Begin(SymbolIndex index) override;

private:
    const std::function<std::string()> m_clock;
    bool m_growing = false;
    std::vector<std::unique_ptr<CDataRecord>> m_records;
    uint64_t m_factChanges = 0; // How often a name, market or type may have become another one.
    std::unordered_map<std::string, SymbolIndex> m_bySymbol; // By the symbol in capital letters.
};

} // namespace vx::sim
