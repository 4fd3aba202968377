// SPDX-License-Identifier: MIT
// What the registry does when processes die, files are damaged and disks refuse.

#include "base/Log.h"
#include "base/Registry.h"
#include "support/ChildProcess.h"
#include "support/SimulatedDisk.h"
#include "support/TempFolder.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

using namespace vx;
using namespace vx::test;
using namespace testing;

namespace {

constexpr char kKey[] = "Software\\Norv\\Zantrel\\Startup";

class RegistrySafety : public testing::Test {
protected:
    RegistrySafety() {
        SetLogSink([this](const SLogEvent& event) { m_log.push_back(event.text); });
    }
    ~RegistrySafety() override { SetLogSink({}); }

    std::string Text(std::string_view name) {
        const auto value = CRegistry(m_folder.Path()).Read(kKey, name);
        return value ? value->text : "";
    }

    CTempFolder m_folder;
    std::vector<std::string> m_log;
};

} // namespace

TEST_F(RegistrySafety, WritersInSeveralProcessesLoseNothing) {
    constexpr int kProcesses = 4;
    constexpr int kValues = 40;
    std::vector<pid_t> children;
    for (int p = 0; p < kProcesses; ++p)
        children.push_back(Fork([&, p] {
            CRegistry registry(m_folder.Path(), 60'000);
            for (int i = 0; i < kValues; ++i)
                if (!registry.WriteDword(kKey, std::to_string(p * kValues + i), static_cast<uint32_t>(i))) return 1;
            return 0;
        }));
    for (const pid_t child : children) EXPECT_EQ(ExitCode(child), 0);
    EXPECT_THAT(CRegistry(m_folder.Path()).EnumerateValues(kKey), SizeIs(kProcesses * kValues));
    EXPECT_THAT(m_log, IsEmpty());
}

TEST_F(RegistrySafety, ADamagedFileIsSetAsideAndDefaultsApply) {
    CRegistry registry(m_folder.Path());
    std::vector<std::string> kept;
    for (const std::string& damaged :
         {std::string("zantrel registry 1\n[A]\n\"a\" = tex"), std::string(), std::string(3000, '\0')}) {
        ASSERT_TRUE(registry.WriteText(kKey, "a", "before"));
        WriteFile(registry.FilePath(), damaged);
        m_log.clear();
        EXPECT_FALSE(registry.KeyExists(kKey));
        EXPECT_TRUE(registry.IsReadable());
        kept.push_back(damaged);
        ASSERT_THAT(m_log, SizeIs(1));
        EXPECT_THAT(m_log[0], HasSubstr(registry.FilePath() + " is damaged (line "));
        EXPECT_TRUE(registry.WriteText(kKey, "a", "after"));
        EXPECT_EQ(Text("a"), "after");
    }
    std::vector<std::string> found;
    for (const std::string& file : m_folder.Files("registry.damaged-")) found.push_back(ReadFile(m_folder / file));
    EXPECT_THAT(found, UnorderedElementsAreArray(kept)) << "none replaces another";
}

TEST_F(RegistrySafety, ADiskThatFailsOrStopsAtAnyCallLeavesTheOldOrTheNewValue) {
    const auto value = [](const char* name) {
        const auto found = CRegistry("/config").Read(kKey, name);
        return found ? found->text : "none";
    };
    TryEveryFault(
        [](CSimulatedDisk& disk) {
            disk.Put("/config/registry.lock", "");
            ASSERT_TRUE(CRegistry("/config").WriteText(kKey, "other", std::string(20'000, 'x')));
            ASSERT_TRUE(CRegistry("/config").WriteText(kKey, "a", "old"));
        },
        [] { return CRegistry("/config").WriteText(kKey, "a", "new"); },
        [&](CSimulatedDisk& disk, const SDiskOutcome& outcome) {
            const std::string now = value("a");
            EXPECT_TRUE((now == "old" && !outcome.saidDone) || (now == "new" && !outcome.saidFailed)) << now;
            EXPECT_EQ(value("other"), std::string(20'000, 'x'));
            EXPECT_TRUE(CRegistry("/config").WriteText(kKey, "a", "next"));
            EXPECT_THAT(disk.Names("/config"), ElementsAre("registry.lock", "registry.txt"));
        });
}

TEST_F(RegistrySafety, WhyTheDiskRefusesIsTold) {
    for (const auto& [error, told] : {std::pair{ENOSPC, 112}, {EACCES, 5}}) {
        CSimulatedDisk disk;
        CRegistry registry("/config");
        disk.Inject({SDiskFault::FailOn, 0, error});
        EXPECT_FALSE(registry.WriteText(kKey, "a", "b") || registry.IsReadable());
        EXPECT_EQ(registry.LastError(), told);
    }
}

TEST_F(RegistrySafety, ADamagedFileIsKeptWhereverTheDiskRefuses) {
    for (int call = 0, reached = 1; reached > call; ++call) {
        CSimulatedDisk disk;
        disk.Put("/config/registry.txt", "precious");
        disk.Inject({SDiskFault::FailOn, call, EACCES});
        CRegistry("/config").WriteText(kKey, "a", "b");
        reached = disk.Calls();
        const auto isPrecious = [&](const std::string& name) { return disk.Content("/config/" + name) == "precious"; };
        EXPECT_TRUE(std::ranges::any_of(disk.Names("/config"), isPrecious)) << call;
    }
}

TEST_F(RegistrySafety, PlacesWhereNoFileCanBeNeitherHangNorThrow) {
    WriteFile(m_folder / "file", "");
    CRegistry below(m_folder / "file/zantrel");
    EXPECT_FALSE(below.WriteText(kKey, "a", "b"));
    EXPECT_FALSE(below.IsReadable());
    ASSERT_EQ(mkfifo((m_folder / "registry.txt").c_str(), 0600), 0);
    CRegistry pipe(m_folder.Path());
    EXPECT_FALSE(pipe.IsReadable());
    EXPECT_FALSE(pipe.WriteText(kKey, "a", "b"));
    EXPECT_EQ(pipe.LastError(), 31);
}

TEST_F(RegistrySafety, ALockThatStaysHeldMakesTheWriteFail) {
    const CFileLock held(m_folder / "registry.lock", 0);
    ASSERT_TRUE(held.IsHeld());
    CRegistry registry(m_folder.Path(), 20);
    EXPECT_FALSE(registry.WriteText(kKey, "a", "b"));
    EXPECT_EQ(registry.LastError(), 33);
}
