// SPDX-License-Identifier: MIT
// The cut of a line by bit masks of 64 bytes, written once and compiled for each instruction set. The including file is
// inside an unnamed namespace of vx and has defined before
//   ZW_TARGET                               the attribute of every function, empty or the instruction set
//   SBlock ReadBlock(const char*)           what 64 bytes hold

ZW_TARGET inline SBlock TailBlock(std::string_view line, size_t from) {
    const size_t left = line.size() - from;
    if (line.size() >= 64) {
        const SBlock block = ReadBlock(line.data() + line.size() - 64);
        return {block.commas >> (64 - left), block.hasBlanks};
    }
    char copy[64] = {};
    std::memcpy(copy, line.data() + from, left);
    return ReadBlock(copy);
}

// Writes the fields that end at the set bits, four at a time: what is written too much is written over later, and the
// number of rounds is easier to foresee than the number of bits.
ZW_TARGET inline size_t WriteFields(uint64_t ends, uint64_t commas, size_t from, size_t slot, size_t at,
                                    SCutLine& out) {
    const auto count = static_cast<size_t>(std::popcount(ends));
    for (size_t done = 0; done < count; done += 4)
        for (size_t i = at + done; i < at + done + 4; ++i) {
            const uint64_t before = commas & (ends - 1) & ~ends;
            out.ends[i] = static_cast<uint16_t>(from + static_cast<size_t>(std::countr_zero(ends)));
            out.begins[i] = static_cast<uint16_t>(from + 64 - static_cast<size_t>(std::countl_zero(before)));
            out.slots[i] = static_cast<uint8_t>(slot + static_cast<size_t>(std::popcount(before)));
            ends &= ends - 1;
        }
    return count;
}

ZW_TARGET void Cut(std::string_view line, size_t slots, SCutLine& out) {
    line = line.substr(0, SCutLine::kMostBytes);
    size_t count = 0;
    size_t slot = 0;
    size_t begin = kFirstFieldOffset; // Of the field that is open at the start of the block.
    uint64_t afterComma = 1;          // Whether the block starts right after a comma.
    bool hasBlanks = false;
    for (size_t from = kFirstFieldOffset; from < line.size() && slot < slots; from += 64) {
        const SBlock block = line.size() - from >= 64 ? ReadBlock(line.data() + from) : TailBlock(line, from);
        hasBlanks |= block.hasBlanks;
        const uint64_t commas = block.commas;
        const uint64_t ends = commas & ~(commas << 1 | afterComma);
        const size_t found = WriteFields(ends, commas, from, slot, count, out);
        // A field that ends at the block's first comma began before the block, or at its start.
        if ((commas & (0 - commas) & ends) != 0) out.begins[count] = static_cast<uint16_t>(begin);
        count += found;
        slot += static_cast<size_t>(std::popcount(commas));
        if (commas != 0) begin = from + 64 - static_cast<size_t>(std::countl_zero(commas));
        afterComma = commas >> 63;
    }
    while (count > 0 && out.slots[count - 1] >= slots) --count;
    out.count = count;
    out.hasBlanks = hasBlanks;
}
