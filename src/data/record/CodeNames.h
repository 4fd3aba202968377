#pragma once

#include <string_view>

namespace vx {

/// Names for the numeric codes that data lines carry: listed markets and security types.
///
/// Units   ids run from 0 to 255; any other id has an empty name
/// Owns    the texts; a returned name is good until the next load
/// Thread  GUI thread only; a load may block it for up to 2 s
class CCodeNames {
public:
    virtual ~CCodeNames() = default;

    /// Loads the markets' names unless they are there already, and says whether they are there now. A call while they
    /// are missing tries again; the caller spaces its calls, and an implementation may pause longer.
    virtual bool EnsureMarketsLoaded() = 0;
    /// The same for the security types.
    virtual bool EnsureSecurityTypesLoaded() = 0;

    /// Short name of a listed market; empty while the table is not loaded. Never loads.
    virtual std::string_view MarketName(int id) const = 0;
    /// Name of a security type; empty while the table is not loaded. Never loads.
    virtual std::string_view SecurityTypeName(int id) const = 0;
};

} // namespace vx
