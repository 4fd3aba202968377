#pragma once

#include "feed/lookup/CodeTable.h"

namespace vx {

/// The security types as the feed client names them, by security-type id: long name, short name. The feed client sends
/// the two the other way round.
///
/// Source  docs/feed-protocol.md, "Code tables"
class CSecurityTypes : public CCodeTable<2> {
public:
    using CCodeTable::CCodeTable;

    void Load() override { LoadTable("SST\r\n", EOrder::Reversed); }
};

} // namespace vx
