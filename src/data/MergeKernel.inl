// The merge, written once and compiled for each instruction set. The including file is inside an unnamed namespace of
// vx and has defined before
//   ZW_TARGET                               the attribute of every function, empty or the instruction set
//   uint64_t Commas64(const char*)          one bit for each of 64 bytes that is a comma
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

ZW_TARGET inline uint64_t TailCommas(std::string_view line, size_t from) {
    const size_t left = line.size() - from;
    if (line.size() >= 64) return Commas64(line.data() + line.size() - 64) >> (64 - left);
    char block[64] = {};
    std::memcpy(block, line.data() + from, left);
    return Commas64(block);
}

// Writes the position of every set bit, four at a time: what is written too much is written over later, and the number
// of rounds is easier to foresee than the number of bits.
ZW_TARGET inline size_t WritePositions(uint64_t bits, size_t from, uint32_t* out) {
    const auto count = static_cast<size_t>(std::popcount(bits));
    for (size_t done = 0; done < count; done += 4)
        for (size_t i = 0; i < 4; ++i) {
            out[done + i] = static_cast<uint32_t>(from) + static_cast<uint32_t>(std::countr_zero(bits));
            bits &= bits - 1;
        }
    return count;
}

ZW_TARGET inline void WriteStarts(uint64_t bits, uint64_t commas, size_t from, size_t slot, uint32_t* begins,
                                  uint32_t* slots) {
    const auto count = static_cast<size_t>(std::popcount(bits));
    for (size_t done = 0; done < count; done += 4)
        for (size_t i = 0; i < 4; ++i) {
            begins[done + i] = static_cast<uint32_t>(from) + static_cast<uint32_t>(std::countr_zero(bits));
            const uint64_t before = commas & (bits - 1);
            slots[done + i] = static_cast<uint32_t>(slot) + static_cast<uint32_t>(std::popcount(before));
            bits &= bits - 1;
        }
}

ZW_TARGET void Cut(std::string_view line, size_t slots, SCutLine& out) {
    size_t begun = 0;
    size_t ended = 0;
    size_t slot = 0;
    uint64_t afterComma = 1; // Whether the block starts right behind a comma.
    for (size_t from = kFirstFieldOffset; from < line.size() && slot < slots; from += 64) {
        const size_t left = line.size() - from;
        const uint64_t commas = left >= 64 ? Commas64(line.data() + from) : TailCommas(line, from);
        const uint64_t behind = commas << 1 | afterComma;
        const uint64_t inside = left >= 64 ? ~uint64_t{0} : (uint64_t{1} << left) - 1;
        const uint64_t starts = ~commas & behind & inside;
        WriteStarts(starts, commas, from, slot, out.begins.data() + begun, out.slots.data() + begun);
        begun += static_cast<size_t>(std::popcount(starts));
        ended += WritePositions(commas & ~behind, from, out.ends.data() + ended);
        slot += static_cast<size_t>(std::popcount(commas));
        afterComma = commas >> 63;
    }
    // The text behind the last comma has begun and not ended.
    while (ended > 0 && out.slots[ended - 1] >= slots) --ended;
    out.count = ended;
}

ZW_TARGET inline bool Trim(const char*& first, const char*& last) {
    while (first != last && *first == ' ') ++first;
    while (first != last && last[-1] == ' ') --last;
    return first != last;
}

ZW_TARGET inline void MergeNumber(const char* line, const char* first, const char* last, EParseRule rule, double& slot,
                                  EDirection& direction, EPriceWord& priceWord) {
    const double scale = rule == EParseRule::Percent ? 100.0 : 1.0;
    SPlainNumber plain;
    if (ReadPlain(line, first, last, plain)) {
        priceWord = rule == EParseRule::Price ? EPriceWord::Price : priceWord;
        Set(slot, direction, PlainDouble(plain) * scale);
        return;
    }
    const std::string_view text{first, static_cast<size_t>(last - first)};
    if (rule == EParseRule::Price) {
        const EPriceWord word = slowpath::ClassifyPrice(text);
        if (word != EPriceWord::None) priceWord = word;
        if (word == EPriceWord::NotFound) return;
    }
    Set(slot, direction, ReadDouble(text) * scale);
}

ZW_TARGET inline int64_t ReadWhole(const char* line, const char* first, const char* last, bool isUnsigned) {
    SPlainNumber plain;
    if (ReadPlain(line, first, last, plain) && plain.whole) {
        const int64_t least = isUnsigned ? 0 : std::numeric_limits<int32_t>::min();
        const int64_t most = isUnsigned ? std::numeric_limits<uint32_t>::max() : std::numeric_limits<int32_t>::max();
        return std::clamp(PlainWhole(plain), least, most);
    }
    const std::string_view text{first, static_cast<size_t>(last - first)};
    return isUnsigned ? int64_t{ReadUInt32(text)} : int64_t{ReadInt32(text)};
}

ZW_TARGET void Merge(std::string_view line, const SCutLine& cut, const SFieldSlots& block, SMergeNotes& notes) {
    // Copies, because a text that is written may be anything to the compiler, these included.
    const SSlot* const layout = block.layout.data();
    SFieldValue* const values = block.values;
    EDirection* const directions = block.directions;
    const char* const begin = line.data();
    const char* const end = begin + line.size();
    const size_t count = cut.count;
    SMergeNotes seen;
    for (size_t i = 0; i < count; ++i) {
        const size_t position = cut.slots[i];
        const SSlot& slot = layout[position];
        const char* first = begin + cut.begins[i];
        const char* last = begin + cut.ends[i];
        if ((*first == ' ' || last[-1] == ' ') && !Trim(first, last)) continue;
        seen.Carry(position);
        EDirection& direction = directions[slot.value];
        switch (slot.kind) {
        case EMergeKind::Number:
            MergeNumber(begin, first, last, slot.rule, values[slot.value].number, direction, seen.priceWord);
            break;
        case EMergeKind::Whole:
            Set(values[slot.value].whole, direction, ReadWhole(begin, first, last, slot.rule == EParseRule::Unsigned));
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
            slowpath::MergeTick(ReadWhole(begin, first, last, false), slot, block);
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
