// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/L1SymbolRec.h"

#include <array>
#include <string>

namespace vx::test {

/// Names that are there at once, or only after a load that a test lets succeed.
class CFakeCodeNames : public CCodeNames {
public:
    CFakeCodeNames() {
        for (size_t i = 0; i < 200; ++i) m_markets[i] = std::to_string(i).insert(0, 1, 'M');
        m_markets[7] = "A market with quite a long name";
        m_types = {"", "EQUITY", "IEOPTION", "Mutual Fund"};
    }

    bool EnsureMarketsLoaded() override {
        ++loads;
        return loaded = loaded || canLoad;
    }
    bool EnsureSecurityTypesLoaded() override { return EnsureMarketsLoaded(); }
    std::string_view MarketName(int id) const override { return Name(m_markets, id); }
    std::string_view SecurityTypeName(int id) const override { return Name(m_types, id); }

    bool canLoad = true;
    bool loaded = false;
    int loads = 0;

private:
    using Table = std::array<std::string, 256>;
    std::string_view Name(const Table& table, int id) const {
        return loaded && id >= 0 && id < 256 ? std::string_view{table[static_cast<size_t>(id)]} : std::string_view{};
    }

    Table m_markets;
    Table m_types;
};

} // namespace vx::test
