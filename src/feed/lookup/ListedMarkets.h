#pragma once

#include "feed/lookup/CodeTable.h"

namespace vx {

/// The listed markets as the feed client names them, by market id: short name, long name, group id, group name.
///
/// Source  docs/feed-protocol.md, "Code tables"
class CListedMarkets : public CCodeTable<4> {
public:
    using CCodeTable::CCodeTable;

    void Load() override { LoadTable("SLM\r\n", EOrder::AsSent); }
};

} // namespace vx
