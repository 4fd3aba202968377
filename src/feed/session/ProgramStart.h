// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <string>
#include <string_view>

namespace vx {

// The product and version that the feed client is started with. They are part of the protocol: the version stays as it
// is when a release gets another number, which is the project's in CMakeLists.txt.

inline constexpr const char* kProductId = "ZANTREL_WATCHLIST";
inline constexpr const char* kLaunchVersion = "1.8.3.0";

/// The error number of a start, in the two forms that the error texts show; 0 and 0 when the program runs.
///
/// Source  the system error numbers of program starts: 2 not found, 5 access denied
struct SStartResult {
    int error = 0;
    int instance = 0;
    bool Started() const { return error == 0; }
};

/// Starts a program by its bare name and does not wait for it.
///
/// Shape   name: "vxconnect.exe" or "vxconnect", the ending is tried with and without; arguments: one item each, no
///         shell reads them
/// Errors  2/2 when no such program lies beside this one or on the search path; 5/5 when one beside this program
///         may not be executed, or one that was found could not be
SStartResult StartProgram(std::string_view name, const QStringList& arguments);

/// Whether StartProgram would find a program of that name.
bool IsInstalled(std::string_view name);

/// Starts the feed client for a product in a version, whether or not one runs already.
SStartResult StartFeedClient(std::string_view product, std::string_view version);

/// The message to the user when the feed client did not start.
std::string FeedClientStartError(const SStartResult& result);

} // namespace vx
