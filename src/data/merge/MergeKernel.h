// SPDX-License-Identifier: MIT
#pragma once

#include "data/record/FieldBlock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx {

/// Where the letter and comma that begin every data line end.
inline constexpr size_t kFirstFieldOffset = 2;

/// The filled fields of one data line, left to right: those that hold at least one character and that a comma ends.
struct SCutLine {
    /// The beginning of a longer line is cut: no line of the feed's connection is longer.
    static constexpr size_t kMostBytes = 65535;
    /// A block of 64 bytes is cut whole, and several fields at a time: some are written after the last slot and
    /// dropped.
    static constexpr size_t kRoom = kMostSlots + 64;

    size_t count = 0;
    bool hasBlanks = false;             ///< The line holds a blank; without one there is nothing to trim.
    std::array<uint16_t, kRoom> begins; ///< Offsets into the line.
    std::array<uint16_t, kRoom> ends;
    std::array<uint8_t, kRoom> slots; ///< Positions among all fields, empty ones included.

    /// Field `index` without the blanks around it.
    std::string_view Trimmed(std::string_view line, size_t index) const;
    /// The symbol's field, without the blanks around it; empty when the line has none.
    std::string_view Symbol(std::string_view line) const {
        return count > 0 && slots[0] == 0 ? Trimmed(line, 0) : std::string_view{};
    }
};

/// Whether a message said something about the symbol's existence.
enum class EPriceWord : uint8_t { None, Price, NotFound };

/// What a merge came across.
struct SMergeNotes {
    uint8_t carried = 0; ///< The notes of all slots that held more than blanks.
    EPriceWord priceWord = EPriceWord::None;

    bool Carried(unsigned note) const { return (carried & note) != 0; }
};

/// One implementation of the two steps that every data line goes through. All of them give the same results, bit for
/// bit.
///
/// Thread  any, one record at a time
struct SMergeKernel {
    const char* name;

    /// Finds the filled fields from kFirstFieldOffset on: those that a comma ends, in the first `slots` positions.
    void (*cut)(std::string_view line, size_t slots, SCutLine& out);

    /// Reads the fields by the rules of their slots into the block, directions included. A field of blanks leaves its
    /// slot alone. Allocates only for a text that is longer than any before it in its slot.
    void (*merge)(std::string_view line, const SCutLine& cut, const SFieldSlots& block, SMergeNotes& notes);
};

/// Works on every machine.
const SMergeKernel& PortableKernel();
/// Needs AVX2 and the bit counting instructions that come with it; null where they are missing.
const SMergeKernel* Avx2Kernel();
/// Needs AVX-512 with its instructions for bytes and bits, as the processors have that brought VBMI2; null where one of
/// them is missing.
const SMergeKernel* Avx512Kernel();
/// The fastest that this machine can run.
const SMergeKernel& BestKernel();

} // namespace vx
