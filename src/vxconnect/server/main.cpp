// SPDX-License-Identifier: MIT
#include "base/Log.h"
#include "base/Number.h"
#include "base/Registry.h"
#include "vxconnect/common/Options.h"
#include "vxconnect/data/ByteStreams.h"
#include "vxconnect/data/InputSource.h"
#include "vxconnect/data/ReplaySource.h"
#include "vxconnect/server/Server.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

constexpr uint16_t kLevel1Port = 5009;
constexpr uint16_t kLookupPort = 9100;
constexpr uint16_t kAdminPort = 9300;
constexpr std::string_view kStandardInput = "-";
constexpr int kBadUsage = 2; // A bad argument, or a file that cannot be served.

// The port that the programs of this user connect to; text that is no port number counts as none.
uint16_t PortOfSettings(std::string_view valueName, uint16_t standard) {
    const auto value = vx::CRegistry::CurrentUser().Read(vx::kStartupKey, valueName);
    const auto port = value && value->kind == vx::ERegistryKind::Text
                          ? static_cast<uint16_t>(vx::ReadInt32(value->text))
                          : uint16_t{0};
    return port != 0 ? port : standard;
}

void Say(const std::string& text) { std::fprintf(stderr, "vxconnect: %s\n", text.c_str()); }

// The source of the user's own live data, null for none.
std::unique_ptr<vx::sim::CByteStream> StreamOf(const vx::sim::SOptions& options) {
    std::error_code missing;
    if (!options.feeder.empty()) return std::make_unique<vx::sim::CFeeder>(options.feeder, options.feederPauseMs);
    if (options.input == kStandardInput) return std::make_unique<vx::sim::CStandardInput>(STDIN_FILENO);
    if (std::filesystem::is_fifo(options.input, missing)) return std::make_unique<vx::sim::CNamedPipe>(options.input);
    return nullptr;
}

// What is served, null for the simulated market; nothing when a file is wrong, which has been said.
std::optional<std::unique_ptr<vx::sim::CSource>> MakeSource(const vx::sim::SOptions& options) {
    if (auto stream = StreamOf(options)) {
        auto pipe = std::make_unique<vx::sim::CInputPipeSource>(options, std::move(stream), Say);
        if (!pipe->Open()) return std::nullopt;
        return pipe;
    }
    if (!options.input.empty()) {
        auto file = std::make_unique<vx::sim::CInputFileSource>(options, Say);
        if (!file->Open()) return std::nullopt;
        return file;
    }
    if (!options.replay.empty()) {
        auto replay = std::make_unique<vx::sim::CReplaySource>(options);
        if (const std::string error = replay->Open(); !error.empty()) {
            Say(error);
            return std::nullopt;
        }
        return replay;
    }
    return nullptr;
}

int Serve(const vx::sim::SOptions& options) {
    auto source = MakeSource(options);
    if (!source) return kBadUsage;
    vx::sim::CServer server(options, std::move(*source));
    const auto outcome = server.Start();
    std::FILE* const out = outcome == vx::sim::CServer::EStart::Failed ? stderr : stdout;
    std::fprintf(out, "%s\n", server.Message().c_str());
    std::fflush(out);
    if (outcome == vx::sim::CServer::EStart::Failed) return 1;
    if (outcome == vx::sim::CServer::EStart::AlreadyServed) return 0;
    server.OnFinished = [] { QCoreApplication::quit(); };
    if (options.verbose) server.OnFigures = [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    // Before anything else is opened: the next descriptor would take its number.
    const bool hasStandardInput = fcntl(STDIN_FILENO, F_GETFD) >= 0;
    QCoreApplication app(argc, argv);
    std::signal(SIGPIPE, SIG_IGN); // Whoever read our output may be gone.
    vx::sim::SOptions options = vx::sim::ReadOptions(std::vector<std::string>(argv + 1, argv + argc));
    if (!options.error.empty()) {
        Say(options.error);
        return kBadUsage;
    }
    if (options.input == kStandardInput && !hasStandardInput) {
        Say("standard input is closed: --input - has nothing to read");
        return kBadUsage;
    }
    std::error_code missing;
    if (options.input == kStandardInput && std::filesystem::is_regular_file("/dev/stdin", missing))
        options.input = "/dev/stdin"; // A file like any other: it is not followed, so its end means nothing.
    for (const std::string& name : options.passedOver) Say(name + " is no option of this program and is passed over");
    if (options.help) return std::fputs(vx::sim::HelpText().c_str(), stdout) < 0;
    if (options.version) return std::puts("vxconnect " ZW_RELEASE) < 0;
    if (!options.level1Port) options.level1Port = PortOfSettings(vx::kLevel1PortValue, kLevel1Port);
    if (!options.lookupPort) options.lookupPort = PortOfSettings(vx::kLookupPortValue, kLookupPort);
    if (!options.adminPort) options.adminPort = PortOfSettings(vx::kAdminPortValue, kAdminPort);
    if (options.log) {
        vx::SetLogCategories(~vx::LogCategories{0});
        vx::ConfigureLog({.folder = {}, .console = true});
    }
    return Serve(options);
}
