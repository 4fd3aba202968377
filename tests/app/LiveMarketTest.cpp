// SPDX-License-Identifier: MIT
#include "app/FrameFixture.h"

#include <QProcess>
#include <QRegularExpression>

using namespace vx;
using namespace vx::test;

namespace {

/// The feed client that ships with the program, as a child process on free ports.
class LiveMarket : public CFrameFixture {
protected:
    ~LiveMarket() override {
        m_client.kill();
        m_client.waitForFinished();
    }

    /// The frame on a market that was started with some arguments, parted by blanks.
    void Connected(const std::string& symbols, const char* market) {
        m_client.start(QStringLiteral(ZW_BIN_DIR "/vxconnect"),
                       (QStringLiteral("--level1-port 0 --lookup-port 0 --admin-port 0 ") + QString::fromUtf8(market))
                           .split(QLatin1Char(' '), Qt::SkipEmptyParts));
        QString said;
        ASSERT_TRUE(WaitUntil([&] {
            return (said += QString::fromLatin1(m_client.readAllStandardOutput())).contains(QLatin1Char('\n'));
        }));
        const auto port = [&](const char* name) {
            const QRegularExpression number(QString::fromLatin1(name) + QStringLiteral("=(\\d+)"));
            return static_cast<uint16_t>(number.match(said).captured(1).toUInt());
        };
        PortsAre(port("level1"), port("lookup"), port("admin"));
        Frame({"-symbol", symbols});
        frame->LookupTables().SetTimes({10000, 10000});
        frame->OpenAdminPort();
    }
    testing::AssertionResult HasCome(int row, int column) {
        if (WaitUntil([&] { return !Shown(row, column).empty(); })) return testing::AssertionSuccess();
        return testing::AssertionFailure() << "nothing in row " << row << ", column " << column;
    }
    testing::AssertionResult HasCome(int row) { return HasCome(row, ColumnOf("Last")); }

    QProcess m_client;
};

} // namespace

TEST_F(LiveMarket, TheBoardFillsAndMovesAndMarketsAndSecurityTypesShowTheirNames) {
    Connected("IBM,MSFT,NO SUCH", "--rate 400");
    const int bid = ColumnOf("Bid");
    ASSERT_TRUE(HasCome(1) && HasCome(2));
    EXPECT_EQ(Shown(1, 1), "IBM");
    const std::string first = Shown(1, bid) + Shown(2, bid);
    EXPECT_TRUE(WaitUntil([&] { return Shown(1, bid) + Shown(2, bid) != first; }));
    EXPECT_TRUE(WaitUntil([&] { return doc->SymbolCount() == 2; }));
    EXPECT_EQ(doc->AnnotationText(3), "\"NO SUCH\" is an Invalid or Unauthorized Symbol.");
    EXPECT_EQ(frame->Stats().status, "Connected");

    ColumnsAre("Trade Market Center;Trade Market Center Name;LQT Market Center;MRT Market Center;"
               "Bid Market Center Name;Ask Market Center Name;Listed Market Name;Security Type Name;");
    const int type = ColumnOf("Security Type Name");
    for (int column = 1; column < type; ++column) {
        EXPECT_TRUE(HasCome(1, column));
        EXPECT_EQ(Shown(1, column).find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos)
            << Shown(1, column) << " is not the short name of a market";
    }
    EXPECT_TRUE(Shows(1, "Security Type Name", "Equity"));
}

TEST_F(LiveMarket, TheProgramMakesAPictureOfAFileThatIsThere) {
    const QString program = QStringLiteral(ZW_BIN_DIR "/zantrel-watchlist"),
                  picture = QString::fromStdString(At("a.png"));
    for (const auto& [argument, code] : {std::pair{"--seconds=0", 0}, {"none.vxw", 1}})
        EXPECT_EQ(QProcess::execute(program, {QStringLiteral("--screenshot"), picture, QLatin1String(argument)}), code);
}
