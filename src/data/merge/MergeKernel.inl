// SPDX-License-Identifier: MIT
// The merge, field by field, written once and compiled for each instruction set. The including file is inside an
// unnamed namespace of vx and has defined before
//   ZW_TARGET                               the attribute of every function, empty or the instruction set
//   bool ReadPlain(std::string_view line, const char* first, const char* last, SPlainNumber&)
//                                           reads a text that is nothing but an optional sign and 1 to 15 digits with
//                                           at most one point among them; any other text may give false

// Digits (below 2^53) and divisor are exact, so the quotient is the correctly rounded value of the text.
ZW_TARGET inline double PlainDouble(const SPlainNumber& plain) {
    return static_cast<double>(static_cast<int64_t>(plain.digits)) / plain.divisor;
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

ZW_TARGET inline bool Trim(const char*& first, const char*& last) {
    while (first != last && *first == ' ') ++first;
    while (first != last && last[-1] == ' ') --last;
    return first != last;
}

template <EMergeKind kKind>
ZW_TARGET inline void MergeNumber(std::string_view line, const char* first, const char* last, double& slot,
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

template <typename TInteger>
ZW_TARGET inline int64_t ReadWhole(std::string_view line, const char* first, const char* last) {
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

ZW_TARGET inline void MergeText(std::string_view line, const char* first, const char* last, CSlotText& to) {
    const std::string_view text{first, static_cast<size_t>(last - first)};
    if (static_cast<size_t>(line.data() + line.size() - first) > CSlotText::kInlineSize)
        to.AssignReadable(text);
    else
        to.Assign(text);
}

// One field that is not empty.
ZW_TARGET inline void MergeField(std::string_view line, const char* first, const char* last, const SSlot& slot,
                                 const SFieldSlots& block, SMergeNotes& notes) {
    notes.carried = static_cast<uint8_t>(notes.carried | slot.note);
    SFieldValue& value = block.values[slot.value];
    EDirection& direction = block.directions[slot.direction];
    switch (slot.kind) {
    case EMergeKind::Number:
        MergeNumber<EMergeKind::Number>(line, first, last, value.number, direction, notes.priceWord);
        break;
    case EMergeKind::Percent:
        MergeNumber<EMergeKind::Percent>(line, first, last, value.number, direction, notes.priceWord);
        break;
    case EMergeKind::Price:
        MergeNumber<EMergeKind::Price>(line, first, last, value.number, direction, notes.priceWord);
        break;
    case EMergeKind::Integer:
        Set(value.whole, direction, ReadWhole<int32_t>(line, first, last));
        break;
    case EMergeKind::Unsigned:
        Set(value.whole, direction, ReadWhole<uint32_t>(line, first, last));
        break;
    case EMergeKind::Text:
        MergeText(line, first, last, block.texts[slot.extra]);
        direction = EDirection::Unchanged;
        break;
    case EMergeKind::Tick:
        slowpath::MergeTick(ReadWhole<int32_t>(line, first, last), slot, block);
        break;
    case EMergeKind::Rare:
        slowpath::MergeRareField({first, static_cast<size_t>(last - first)}, slot, block);
        break;
    case EMergeKind::Skip:
        break;
    }
}

ZW_TARGET void Merge(std::string_view line, const SCutLine& cut, const SFieldSlots& block, SMergeNotes& notes) {
    // A copy, because a text that is written may be anything to the compiler, the arguments included.
    const SFieldSlots into = block;
    const size_t count = cut.count;
    const bool hasBlanks = cut.hasBlanks;
    SMergeNotes seen;
    for (size_t i = 0; i < count; ++i) {
        const char* first = line.data() + cut.begins[i];
        const char* last = line.data() + cut.ends[i];
        if (hasBlanks && !Trim(first, last)) continue;
        MergeField(line, first, last, into.layout[cut.slots[i]], into, seen);
    }
    notes = seen;
}
