#pragma once

#include "app/FrameFixture.h"
#include "support/EventLoop.h"
#include "support/MessageBoxes.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace vx::test {

/// A main frame that finds programs of the test's own, which note how they were started.
class CSiblingFixture : public CFrameFixture {
protected:
    CSiblingFixture() {
        m_path = std::getenv("PATH");
        setenv("PATH", (folder.Path() + ":" + m_path).c_str(), 1);
    }
    ~CSiblingFixture() override { setenv("PATH", m_path.c_str(), 1); }

    std::string At(const std::string& name) const { return folder / name; }
    /// A program of that name that notes how it was started.
    void Install(const std::string& name) {
        WriteFile(At(name), "#!/bin/sh\nfor a in \"$0\" \"$@\"; do printf '%s|' \"${a##*/}\"; done >> '" +
                                At("started.new") + "'\nmv '" + At("started.new") + "' '" + At("started") + "'\n");
        chmod(At(name).c_str(), S_IRWXU);
    }
    /// "vxchart|-symbol|IBM|", folders left out; empty when a command starts nothing.
    std::string StartedBy(const char* command) {
        std::filesystem::remove(At("started"));
        Do(command);
        WaitUntil([&] { return std::filesystem::exists(At("started")) || !boxes.shown.empty(); }, 3000);
        return ReadFile(At("started"));
    }

    CMessageBoxes boxes;

private:
    std::string m_path;
};

} // namespace vx::test
