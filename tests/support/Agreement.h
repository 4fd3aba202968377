// SPDX-License-Identifier: MIT
#pragma once

#include "data/store/L1DataStore.h"
#include "support/PlainStore.h"

namespace vx::test {

/// The first difference between a record and the plain one, in words; empty when they agree in every slot's value,
/// direction and text, in the status, the trades and the regional quotes.
std::string Difference(const CL1SymbolRec& record, const SPlainRecord& plain);

/// The first difference between all records of two stores that saw the same lines; empty when they agree.
std::string Difference(const CL1DataStore& store, const CPlainStore& plain);

} // namespace vx::test
