#pragma once

#include "data/FieldBlock.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vx {

/// Where the letter and comma that begin every data line end.
inline constexpr size_t kFirstFieldOffset = 2;
/// No layout has more slots.
inline constexpr size_t kMostSlots = 72;

/// One field of a line that holds at least one character.
struct SCutField {
    uint32_t begin; ///< Offsets into the line.
    uint32_t end;
    uint32_t slot; ///< Position among all fields, empty ones included.
};

/// The filled fields of one data line, left to right.
struct SCutLine {
    size_t count = 0;
    /// A block of 64 bytes is cut whole, so that a few fields beyond the last slot can be written before they are
    /// dropped.
    std::array<SCutField, kMostSlots + 32> fields;

    /// The symbol's field, without the blanks around it; empty when the line has none.
    std::string_view Symbol(std::string_view line) const;
};

/// Whether a message said something about the symbol's existence.
enum class EPriceWord : uint8_t { None, Price, NotFound };

/// What a merge came across.
struct SMergeNotes {
    std::array<uint64_t, 2> carried{}; ///< One bit for each slot that held more than blanks.
    EPriceWord priceWord = EPriceWord::None;

    bool Carried(size_t slot) const { return (carried[slot / 64] >> (slot % 64) & 1) != 0; }
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
/// The fastest that this machine can run.
const SMergeKernel& BestKernel();

} // namespace vx
