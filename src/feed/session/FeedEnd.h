#pragma once

namespace vx {

/// How the session with the feed client has come to its end; nothing is connected again during a run.
enum class EFeedEnd {
    None,
    Status,     ///< The status port is silent for good, quotes still come.
    Quotes,     ///< No quote will come any more.
    Unreachable ///< One of the two connections never came about.
};

} // namespace vx
