#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vx {

/// One request takes at most so many symbols, and the line at most so many bytes: a quarter of the longest line that a
/// feed client takes, and a reply that is read in no noticeable time.
inline constexpr size_t kMostNewsSymbols = 500;
inline constexpr size_t kMostNewsRequestBytes = 16 * 1024;

/// The request for the counts of today's news, its line end included; today is the clock's local date.
///
/// Shape   "IBM:MSFT" -> "NSC,IBM:MSFT,x,,20240131,LNewsCounts\r\n"
std::string NewsCountsRequest(std::string_view symbolList);

/// The requests for a list of symbols, as few as the limits above allow, symbols in their order.
///
/// Errors  none; symbols that no request can carry are left out: empty ones, those that hold ",", ":" or control
///         characters, and those longer than a request
std::vector<std::string> NewsCountsRequests(std::span<const std::string> symbols);

/// The lookup connection, as far as news counts go.
///
/// Thread  GUI thread only
class CNewsCountsPort {
public:
    virtual ~CNewsCountsPort() = default;

    /// Sends one request as it stands and returns without waiting; its reply goes to CNewsMap::ApplyCountsReply. A
    /// request that cannot be sent is dropped: the counts then grow with the headlines.
    virtual void SendNewsRequest(std::string_view request) = 0;
};

/// Asks for today's counts of the symbols.
void RequestNewsCounts(std::span<const std::string> symbols, CNewsCountsPort& port);

} // namespace vx
