// The merge, written once and compiled for each instruction set. The including file is inside an unnamed namespace of
// vx and has defined before
//   ZW_TARGET                               the attribute of every function, empty or the instruction set
//   uint64_t Commas64(const char*)          one bit for each of 64 bytes that is a comma
//   bool ReadPlain(const char* line, const char* first, const char* last, SPlainNumber&)
//                                           reads a text that is nothing but an optional sign and 1 to 15 digits with
//                                           at most one point among them; any other text gives false

// One exact power for each number of places that a plain number can have.
constexpr double kPowersOfTen[16] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                     1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};

// Both the digits (below 2^53) and the power are exact, so the quotient is the correctly rounded value of the text.
ZW_TARGET inline double PlainDouble(const SPlainNumber& plain) {
    const double digits = static_cast<double>(static_cast<int64_t>(plain.digits)) / kPowersOfTen[plain.places];
    return plain.negative ? -digits : digits;
}

ZW_TARGET inline int32_t PlainInt(const SPlainNumber& plain) {
    const int64_t digits = static_cast<int64_t>(plain.digits);
    const int64_t value = plain.negative ? -digits : digits;
    return static_cast<int32_t>(
        std::clamp<int64_t>(value, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

ZW_TARGET inline uint32_t PlainUnsigned(const SPlainNumber& plain) {
    if (plain.negative) return 0;
    return static_cast<uint32_t>(std::min<uint64_t>(plain.digits, std::numeric_limits<uint32_t>::max()));
}

template <typename TNumber> ZW_TARGET inline void Set(TNumber& slot, EDirection& direction, TNumber now) {
    const int step = static_cast<int>(now > slot) - static_cast<int>(now < slot);
    const int known = direction != EDirection::NeverSet ? 1 : 0;
    direction = static_cast<EDirection>(static_cast<int>(EDirection::Unchanged) + step * known);
    slot = now;
}

ZW_TARGET inline uint64_t TailCommas(std::string_view line, size_t from) {
    const size_t left = line.size() - from;
    if (line.size() >= 64) return Commas64(line.data() + line.size() - 64) >> (64 - left);
    char block[64] = {};
    std::memcpy(block, line.data() + from, left);
    return Commas64(block);
}

ZW_TARGET void Cut(std::string_view line, size_t slots, SCutLine& out) {
    size_t count = 0;
    size_t slot = 0;
    size_t begin = kFirstFieldOffset; // Of the field that is open at the start of the block.
    uint64_t afterComma = 1;          // Whether the block starts right behind a comma.
    for (size_t from = kFirstFieldOffset; from < line.size() && slot < slots; from += 64) {
        const uint64_t commas = line.size() - from >= 64 ? Commas64(line.data() + from) : TailCommas(line, from);
        uint64_t ends = commas & ~(commas << 1 | afterComma);
        for (; ends != 0; ends &= ends - 1) {
            const auto bit = static_cast<size_t>(std::countr_zero(ends));
            const uint64_t before = commas & ((uint64_t{1} << bit) - 1);
            const size_t start = before != 0 ? from + 64 - static_cast<size_t>(std::countl_zero(before)) : begin;
            out.fields[count++] = {static_cast<uint32_t>(start), static_cast<uint32_t>(from + bit),
                                   static_cast<uint32_t>(slot + static_cast<size_t>(std::popcount(before)))};
        }
        slot += static_cast<size_t>(std::popcount(commas));
        if (commas != 0) begin = from + 64 - static_cast<size_t>(std::countl_zero(commas));
        afterComma = commas >> 63;
    }
    while (count > 0 && out.fields[count - 1].slot >= slots) --count;
    out.count = count;
}

ZW_TARGET inline bool Trim(const char*& first, const char*& last) {
    while (first != last && *first == ' ') ++first;
    while (first != last && last[-1] == ' ') --last;
    return first != last;
}

ZW_TARGET void Merge(std::string_view line, const SCutLine& cut, const SFieldSlots& block, SMergeNotes& notes) {
    for (size_t i = 0; i < cut.count; ++i) {
        const SCutField field = cut.fields[i];
        const SSlot slot = block.layout[field.slot];
        const char* first = line.data() + field.begin;
        const char* last = line.data() + field.end;
        if ((*first == ' ' || last[-1] == ' ') && !Trim(first, last)) continue;
        const std::string_view text{first, static_cast<size_t>(last - first)};
        SFieldValue& value = block.values[slot.value];
        EDirection& direction = block.directions[slot.value];
        SPlainNumber plain;
        switch (slot.rule) {
        case EParseRule::None:
            break;
        case EParseRule::Number:
            Set(value.number, direction,
                ReadPlain(line.data(), first, last, plain) ? PlainDouble(plain) : ReadDouble(text));
            break;
        case EParseRule::Percent:
            Set(value.number, direction,
                (ReadPlain(line.data(), first, last, plain) ? PlainDouble(plain) : ReadDouble(text)) * 100.0);
            break;
        case EParseRule::Price:
            if (ReadPlain(line.data(), first, last, plain)) {
                notes.priceWord = EPriceWord::Price;
                Set(value.number, direction, PlainDouble(plain));
            } else {
                const EPriceWord word = slowpath::ClassifyPrice(text);
                if (word != EPriceWord::None) notes.priceWord = word;
                if (word != EPriceWord::NotFound) Set(value.number, direction, ReadDouble(text));
            }
            break;
        case EParseRule::Integer:
        case EParseRule::Integer15:
        case EParseRule::Integer16:
        case EParseRule::Integer17:
        case EParseRule::Integer18:
        case EParseRule::BidMarketCenter:
        case EParseRule::AskMarketCenter:
        case EParseRule::SecurityType:
            Set(value.integer, direction,
                ReadPlain(line.data(), first, last, plain) && plain.places == 0 ? PlainInt(plain) : ReadInt32(text));
            break;
        case EParseRule::Unsigned:
            Set(value.count, direction,
                ReadPlain(line.data(), first, last, plain) && plain.places == 0 ? PlainUnsigned(plain)
                                                                                : ReadUInt32(text));
            break;
        case EParseRule::Text:
        case EParseRule::Regions:
            block.texts[slot.extra].Assign(text);
            direction = EDirection::Unchanged;
            break;
        default:
            slowpath::MergeRareField(text, slot, block);
            break;
        }
        notes.carried[field.slot / 64] |= uint64_t{1} << (field.slot % 64);
    }
}
