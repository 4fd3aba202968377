// The merge, written once and compiled for each instruction set. The including file is inside an unnamed namespace of
// vx and has defined before
//   ZW_TARGET                               the attribute of every function, empty or the instruction set
//   SBlock ReadBlock(const char*)           what stands in 64 bytes
//   bool ReadPlain(const char* line, const char* first, const char* last, SPlainNumber&)
//                                           reads a text that is nothing but an optional sign and 1 to 15 digits with
//                                           at most one point among them; any other text gives false

// Digits (below 2^53) and divisor are exact, so the quotient is the correctly rounded value of the text.
ZW_TARGET inline double PlainDouble(const SPlainNumber& plain) {
    const double size = static_cast<double>(static_cast<int64_t>(plain.digits)) / plain.divisor;
    return std::bit_cast<double>(std::bit_cast<uint64_t>(size) | uint64_t{plain.negative} << 63);
}

ZW_TARGET inline int64_t PlainWhole(const SPlainNumber& plain) {
    const int64_t sign = -static_cast<int64_t>(plain.negative);
    return (static_cast<int64_t>(plain.digits) ^ sign) - sign;
}

template <typename TNumber> ZW_TARGET inline void Set(TNumber& slot, EDirection& direction, TNumber now) {
    const int step = static_cast<int>(now > slot) - static_cast<int>(now < slot);
    const int known = -static_cast<int>(direction != EDirection::NeverSet);
    direction = static_cast<EDirection>(static_cast<int>(EDirection::Unchanged) + (step & known));
    slot = now;
}

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
            out.ends[i] = static_cast<uint32_t>(from) + static_cast<uint32_t>(std::countr_zero(ends));
            out.begins[i] = static_cast<uint32_t>(from) + 64 - static_cast<uint32_t>(std::countl_zero(before));
            out.slots[i] = static_cast<uint32_t>(slot) + static_cast<uint32_t>(std::popcount(before));
            ends &= ends - 1;
        }
    return count;
}

ZW_TARGET void Cut(std::string_view line, size_t slots, SCutLine& out) {
    size_t count = 0;
    size_t slot = 0;
    size_t begin = kFirstFieldOffset; // Of the field that is open at the start of the block.
    uint64_t afterComma = 1;          // Whether the block starts right behind a comma.
    bool hasBlanks = false;
    for (size_t from = kFirstFieldOffset; from < line.size() && slot < slots; from += 64) {
        const SBlock block = line.size() - from >= 64 ? ReadBlock(line.data() + from) : TailBlock(line, from);
        hasBlanks |= block.hasBlanks;
        const uint64_t commas = block.commas;
        const uint64_t ends = commas & ~(commas << 1 | afterComma);
        const size_t found = WriteFields(ends, commas, from, slot, count, out);
        // A field that ends at the block's first comma began before the block, or at its start.
        if ((commas & (0 - commas) & ends) != 0) out.begins[count] = static_cast<uint32_t>(begin);
        count += found;
        slot += static_cast<size_t>(std::popcount(commas));
        if (commas != 0) begin = from + 64 - static_cast<size_t>(std::countl_zero(commas));
        afterComma = commas >> 63;
    }
    while (count > 0 && out.slots[count - 1] >= slots) --count;
    out.count = count;
    out.hasBlanks = hasBlanks;
}

ZW_TARGET inline bool Trim(const char*& first, const char*& last) {
    while (first != last && *first == ' ') ++first;
    while (first != last && last[-1] == ' ') --last;
    return first != last;
}

template <EMergeKind kKind>
ZW_TARGET inline void MergeNumber(const char* line, const char* first, const char* last, double& slot,
                                  EDirection& direction, EPriceWord& priceWord) {
    SPlainNumber plain;
    double number;
    if (ReadPlain(line, first, last, plain)) {
        if constexpr (kKind == EMergeKind::Price) priceWord = EPriceWord::Price;
        number = PlainDouble(plain);
    } else {
        const std::string_view text{first, static_cast<size_t>(last - first)};
        if constexpr (kKind == EMergeKind::Price) {
            const EPriceWord word = slowpath::ClassifyPrice(text);
            if (word != EPriceWord::None) priceWord = word;
            if (word == EPriceWord::NotFound) return;
        }
        number = ReadDouble(text);
    }
    if constexpr (kKind == EMergeKind::Percent) number *= 100.0;
    Set(slot, direction, number);
}

template <typename TInteger> ZW_TARGET inline int64_t ReadWhole(const char* line, const char* first, const char* last) {
    SPlainNumber plain;
    if (ReadPlain(line, first, last, plain) && plain.whole)
        return std::clamp<int64_t>(PlainWhole(plain), std::numeric_limits<TInteger>::min(),
                                   std::numeric_limits<TInteger>::max());
    const std::string_view text{first, static_cast<size_t>(last - first)};
    if constexpr (std::is_signed_v<TInteger>)
        return ReadInt32(text);
    else
        return ReadUInt32(text);
}

ZW_TARGET void Merge(std::string_view line, const SCutLine& cut, const SFieldSlots& block, SMergeNotes& notes) {
    // Copies, because a text that is written may be anything to the compiler, these included.
    const SSlot* const layout = block.layout.data();
    SFieldValue* const values = block.values;
    EDirection* const directions = block.directions;
    const char* const begin = line.data();
    const char* const end = begin + line.size();
    const size_t count = cut.count;
    const bool hasBlanks = cut.hasBlanks;
    SMergeNotes seen;
    for (size_t i = 0; i < count; ++i) {
        const SSlot& slot = layout[cut.slots[i]];
        const char* first = begin + cut.begins[i];
        const char* last = begin + cut.ends[i];
        if (hasBlanks && !Trim(first, last)) continue;
        seen.carried = static_cast<uint8_t>(seen.carried | slot.note);
        EDirection& direction = directions[slot.value];
        switch (slot.kind) {
        case EMergeKind::Number:
            MergeNumber<EMergeKind::Number>(begin, first, last, values[slot.value].number, direction, seen.priceWord);
            break;
        case EMergeKind::Percent:
            MergeNumber<EMergeKind::Percent>(begin, first, last, values[slot.value].number, direction, seen.priceWord);
            break;
        case EMergeKind::Price:
            MergeNumber<EMergeKind::Price>(begin, first, last, values[slot.value].number, direction, seen.priceWord);
            break;
        case EMergeKind::Integer:
            Set(values[slot.value].whole, direction, ReadWhole<int32_t>(begin, first, last));
            break;
        case EMergeKind::Unsigned:
            Set(values[slot.value].whole, direction, ReadWhole<uint32_t>(begin, first, last));
            break;
        case EMergeKind::Text: {
            const std::string_view text{first, static_cast<size_t>(last - first)};
            CSlotText& to = block.texts[slot.extra];
            if (static_cast<size_t>(end - first) > CSlotText::kInlineSize)
                to.AssignReadable(text);
            else
                to.Assign(text);
            direction = EDirection::Unchanged;
            break;
        }
        case EMergeKind::Tick:
            slowpath::MergeTick(ReadWhole<int32_t>(begin, first, last), slot, block);
            break;
        case EMergeKind::Rare:
            slowpath::MergeRareField({first, static_cast<size_t>(last - first)}, slot, block);
            break;
        case EMergeKind::Skip:
            break;
        }
    }
    notes = seen;
}
