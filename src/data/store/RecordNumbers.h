// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/SymbolRec.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace vx {

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
