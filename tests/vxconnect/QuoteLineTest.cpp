#include "vxconnect/market/QuoteLine.h"

#include "vxconnect/Peer.h"
#include "vxconnect/market/Market.h"

#include <gtest/gtest.h>

#include <regex>

namespace vx::sim {
namespace {

std::string Line(char letter, const CInstrument& instrument, const CFieldMask& fields,
                 const CFieldSelection& selection = {}) {
    std::string out(kMaxQuoteLine, '\0');
    const auto contents = static_cast<uint32_t>(instrument.Value(EField::MessageContents));
    out.resize(
        static_cast<size_t>(WriteQuoteLine(out.data(), letter, instrument, fields, contents, selection) - out.data()));
    return out;
}

TEST(QuoteLine, DeltasCarryOnlyWhatChangedAndAddUpToTheSummary) {
    CMarket market(11, 0, kFirstSessionDate);
    struct SCase {
        const char* symbol;
        int events;
    };
    for (const SCase& run : {SCase{"IBM", 50'000}, SCase{"NKLA", 3'000}}) { // The first beyond the end of a session.
        CInstrument& instrument = market.At(market.Find(run.symbol).value());
        CMergedRecord record;
        record.Merge(Line('P', instrument, instrument.Present()));
        size_t filled = 0;
        for (int i = 0; i < run.events && !HasFatalFailure(); ++i) {
            const SUpdate update = instrument.Tick();
            const std::string line = Line('Q', instrument, update.changed);
            const std::vector<std::string> fields = Fields(line);
            ASSERT_EQ(line.substr(0, 2), "Q,");
            ASSERT_EQ(line.substr(line.size() - 3), ",\r\n");
            for (size_t at = 0; at < kUpdateFieldCount && !update.newSession; ++at) {
                const auto field = static_cast<EField>(at);
                if (field == EField::Symbol || field == EField::Tick || field == EField::MessageContents) continue;
                ASSERT_TRUE(fields[at].empty() || fields[at] != record.Get(field))
                    << kUpdateFields[at].name << " " << line;
            }
            record.Merge(line);
            filled += static_cast<size_t>(update.changed.Count());
        }
        EXPECT_THAT(record.DifferencesTo(Line('P', instrument, instrument.Present())), testing::IsEmpty());
        EXPECT_LT(filled / static_cast<size_t>(run.events), 20u);
    }
}

TEST(QuoteLine, ValuesAreWrittenAsClientsReadThem) {
    CMarket market(1, 0, kFirstSessionDate);
    CInstrument& cents = market.At(market.Find("KO").value());
    CInstrument& fine = market.At(market.Find("NKLA").value());
    for (int i = 0; i < 50; ++i) cents.Tick(), fine.Tick();
    CMergedRecord record, fineRecord;
    record.Merge(Line('P', cents, cents.Present()));
    fineRecord.Merge(Line('P', fine, fine.Present()));
    EXPECT_THAT(record.Get(EField::Last), testing::MatchesRegex("[0-9]+\\.[0-9][0-9]"));
    EXPECT_THAT(fineRecord.Get(EField::Last), testing::MatchesRegex("0\\.[0-9][0-9][0-9][0-9]"));
    EXPECT_EQ(record.Get(EField::DecimalPrecision), "2");
    EXPECT_EQ(fineRecord.Get(EField::DecimalPrecision), "4");
    EXPECT_EQ(record.Get(EField::LastDate), "1/31/2024");
    EXPECT_THAT(record.Get(EField::LastTime), testing::MatchesRegex("10:0[0-9]:[0-9][0-9]"));
    EXPECT_THAT(record.Get(EField::PercentChange), testing::MatchesRegex("-?0\\.[0-9]+"));
    EXPECT_NEAR(std::stod(record.Get(EField::PercentChange)),
                std::stod(record.Get(EField::Change)) / std::stod(record.Get(EField::Close)), 1e-6);
    EXPECT_LE(std::stoi(record.Get(EField::LastMarketCenter)), 255);
}

TEST(QuoteLine, CurrencyPairsHaveTheirPlaces) {
    CMarket market(1, 0, kFirstSessionDate, true);
    struct SPair {
        const char* symbol;
        const char* places;
        const char* price;
        const char* otherPrices;
    };
    for (const SPair& pair : {SPair{"EURUSD", "5", "1\\.0[0-9]{4}", "0\\.0000[0-9]"},
                              SPair{"USDJPY", "3", "14[0-9]\\.[0-9]{3}", "0\\.0[0-9]{2}"}}) {
        CInstrument& instrument = market.At(market.Find(pair.symbol).value());
        for (int i = 0; i < 500; ++i) instrument.Tick();
        CMergedRecord record;
        record.Merge(Line('P', instrument, instrument.Present()));
        EXPECT_EQ(record.Get(EField::DecimalPrecision), pair.places);
        for (const EField price : {EField::Last, EField::Bid, EField::Ask, EField::High, EField::Low, EField::Close})
            EXPECT_TRUE(std::regex_match(record.Get(price), std::regex(pair.price))) << record.Get(price);
        EXPECT_TRUE(std::regex_match(record.Get(EField::Spread), std::regex(pair.otherPrices)))
            << record.Get(EField::Spread);
    }
}

TEST(QuoteLine, FieldsStandInTheOrderAskedFor) {
    CMarket market(1, 0, kFirstSessionDate);
    CInstrument& instrument = market.At(market.Find("IBM").value());
    const std::string line =
        Line('P', instrument, instrument.Present(), CFieldSelection("Close,No Such Field, Symbol,close,,Symbol"));
    EXPECT_EQ(line, "P,183.70,,IBM,,,IBM,\r\n");
    CFieldMask contents;
    contents.Set(EField::MessageContents);
    std::string letters(kMaxQuoteLine, '\0');
    const uint32_t several = kContentsHigh | kContentsTrade | kContentsAsk | kContentsBid;
    WriteQuoteLine(letters.data(), 'Q', instrument, contents, several, CFieldSelection("Message Contents"));
    EXPECT_STREQ(letters.c_str(), "Q,Chba,\r\n") << "newest last";
    std::string many;
    for (int i = 0; i < 5000; ++i) many += "Most Recent Trade Date,";
    const CFieldSelection selection(many);
    EXPECT_LT(Line('P', instrument, instrument.Present(), selection).size(), kMaxQuoteLine);
    EXPECT_EQ(selection.Order().size(), CFieldSelection::kMaxSelected);
    EXPECT_FALSE(selection.IsStandard());
}

} // namespace
} // namespace vx::sim
