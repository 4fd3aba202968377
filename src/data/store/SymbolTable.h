// SPDX-License-Identifier: MIT
#pragma once

#include "base/Hash.h"
#include "data/record/L1SymbolRec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace vx {

/// The level-1 records by symbol, compared exactly.
///
/// Shape   open addressing; the first eight bytes of a symbol are in the table, so that most look-ups touch one entry
///         of it and then the record
/// Owns    the records
class CSymbolTable {
public:
    CSymbolTable();

    CL1SymbolRec* Find(std::string_view symbol) const {
        const uint64_t key = Key(symbol);
        for (size_t i = Slot(key, symbol);; i = (i + 1) & m_mask) {
            const SEntry& entry = m_entries[i];
            if (!entry.record) return nullptr;
            if (entry.key == key && IsNamed(*entry.record, symbol)) return entry.record.get();
        }
    }

    /// Asks for the memory that a look-up begins with.
    void PrefetchEntry(std::string_view symbol) const { __builtin_prefetch(&m_entries[Slot(Key(symbol), symbol)]); }
    /// The record whose symbol is probably this one: looks at the table alone. Null when there is none.
    const CL1SymbolRec* FindByKey(std::string_view symbol) const {
        const uint64_t key = Key(symbol);
        for (size_t i = Slot(key, symbol);; i = (i + 1) & m_mask) {
            const SEntry& entry = m_entries[i];
            if (!entry.record || entry.key == key) return entry.record.get();
        }
    }

    /// The symbol may not be in the table yet.
    CL1SymbolRec& Add(std::unique_ptr<CL1SymbolRec> record);
    void Remove(std::string_view symbol);

    size_t Size() const { return m_size; }

    template <typename Visit> void ForEach(Visit&& visit) const {
        for (const SEntry& entry : m_entries)
            if (entry.record) visit(*entry.record);
    }

private:
    struct SEntry {
        uint64_t key = 0;
        std::unique_ptr<CL1SymbolRec> record;
    };

    /// For a record whose key is the symbol's.
    static bool IsNamed(const CL1SymbolRec& record, std::string_view symbol) {
        const std::string& name = record.Symbol();
        return name.size() == symbol.size() &&
               (name.size() <= sizeof(uint64_t) || std::memcmp(name.data(), symbol.data(), name.size()) == 0);
    }
    static uint64_t Key(std::string_view symbol) { return CSeededHash::Word(symbol); }

    // Long symbols of one root (options) share their first eight bytes. A product with a random odd number is enough
    // for the others.
    size_t Slot(uint64_t key, std::string_view symbol) const {
        constexpr size_t kWord = sizeof(uint64_t);
        uint64_t mixed = key * m_spread;
        if (symbol.size() > kWord) {
            mixed = CSeededHash::Fold(key, m_spread);
            for (size_t at = kWord; at + kWord < symbol.size(); at += kWord)
                mixed = CSeededHash::Fold(mixed ^ CSeededHash::Word(symbol.substr(at)), m_spread);
            mixed = CSeededHash::Fold(mixed ^ CSeededHash::Word(symbol.substr(symbol.size() - kWord)), m_spread);
        }
        return static_cast<size_t>(mixed >> m_shift);
    }
    void Grow();

    std::vector<SEntry> m_entries; ///< Size is a power of two, at most half full.
    size_t m_mask = 0;
    int m_shift = 0;
    uint64_t m_spread = CSeededHash::Seed();
    size_t m_size = 0;
};

/// The records by their running numbers, which rise and are never reused.
///
/// Shape   pages of pointers; a page goes with the last of its records, so that records which come and go for a long
///         time leave only the place of their page, eight bytes for every kInPage numbers
/// Owns    the pages; not the records
class CRecordNumbers {
public:
    static constexpr size_t kInPage = 512;

    void Add(CSymbolRec& record) {
        const uint32_t number = record.Ids().id2;
        if (number / kInPage >= m_pages.size()) m_pages.resize(number / kInPage + 1);
        std::unique_ptr<SPage>& page = m_pages[number / kInPage];
        if (!page) page = std::make_unique<SPage>();
        page->records[number % kInPage] = &record;
        ++page->count;
    }

    void Remove(const CSymbolRec& record) {
        const uint32_t number = record.Ids().id2;
        std::unique_ptr<SPage>& page = m_pages[number / kInPage];
        page->records[number % kInPage] = nullptr;
        if (--page->count == 0) page.reset();
    }

    /// Null when there is none.
    CSymbolRec* Find(uint32_t number) const {
        const size_t page = number / kInPage;
        return page < m_pages.size() && m_pages[page] ? m_pages[page]->records[number % kInPage] : nullptr;
    }

private:
    struct SPage {
        std::array<CSymbolRec*, kInPage> records{};
        size_t count = 0;
    };

    std::vector<std::unique_ptr<SPage>> m_pages;
};

} // namespace vx
