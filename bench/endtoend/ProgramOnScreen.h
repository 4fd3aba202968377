// SPDX-License-Identifier: MIT
#pragma once

#include "support/TempFolder.h"

#include <QProcess>

#include <cstdint>
#include <string>
#include <vector>

namespace vx::bench {

/// A part of the screen, in pixels.
struct SBox {
    int left = 0, top = 0, width = 0, height = 0;
};

/// The program on a display of its own without a window manager, with a home of its own.
///
/// Shape   1920 by 1080 pixels; the picture is a mapped file, so that to look at it asks nobody
/// Errors  Missing names a program that is not installed; what does not start throws
class CProgramOnScreen {
public:
    static constexpr int kWidth = 1920;
    static constexpr int kHeight = 1080;
    using Picture = std::vector<uint32_t>;

    static std::string Missing();

    CProgramOnScreen();
    ~CProgramOnScreen();
    CProgramOnScreen(const CProgramOnScreen&) = delete;
    CProgramOnScreen& operator=(const CProgramOnScreen&) = delete;

    const test::CTempFolder& Folder() const { return m_folder; }
    /// Starts the program on a list.
    void Start(const std::string& program, const std::string& list);
    /// Gives the keyboard to its window, and takes the mouse pointer out of it.
    void Focus();
    /// A key by its name, as from a keyboard.
    void Press(const char* key);

    Picture Look(const SBox& box) const;
    /// How many pixels are not of the colour just left of the box: how much is written there, lit or not.
    int Ink(const SBox& box) const;
    /// The least box with all that changed between two pictures of a part at the top left of the screen; without
    /// width when nothing did.
    static SBox Changed(const Picture& before, const Picture& after, const SBox& part);

    // By what the system says of the program, all threads together.
    double CpuSeconds() const;
    double HeldSeconds() const;               ///< How long it could have run and did not get a core.
    double KernelSeconds() const;             ///< What of it was in the kernel, to 10 ms.
    double Megabytes(const char* name) const; ///< "VmRSS", "VmHWM"

private:
    void Tool(const QStringList& arguments);

    test::CTempFolder m_folder;
    QProcess m_server, m_keys, m_program;
    const uint8_t* m_pixels = nullptr;
    size_t m_lineBytes = 0;
};

} // namespace vx::bench
