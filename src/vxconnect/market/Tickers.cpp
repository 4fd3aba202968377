// SPDX-License-Identifier: MIT
#include "vxconnect/market/Tickers.h"

#include "vxconnect/common/Random.h"

#include <fmt/format.h>

#include <array>
#include <utility>

namespace vx::sim {

namespace {

constexpr std::array<std::string_view, 24> kFirstWords = {
    "Alder",    "Beacon",  "Cobalt",   "Delta",    "Ember",  "Fairfield", "Granite", "Harbor",
    "Ironwood", "Juniper", "Keystone", "Lakeside", "Meadow", "North",     "Orchard", "Pinnacle",
    "Quarry",   "Ridge",   "Summit",   "Timber",   "Union",  "Valley",    "Willow",  "Zenith"};
struct STrade {
    std::string_view word;
    ESector sector;
};
constexpr std::array<STrade, 20> kTrades = {
    {{"Devices", ESector::Technology},  {"Circuits", ESector::Semiconductors}, {"Software", ESector::Software},
     {"Media", ESector::Media},         {"Stores", ESector::Retail},           {"Foods", ESector::Consumer},
     {"Motors", ESector::Autos},        {"Bancorp", ESector::Banks},           {"Assurance", ESector::Insurance},
     {"Health", ESector::Health},       {"Therapeutics", ESector::Pharma},     {"Tools", ESector::Industry},
     {"Aviation", ESector::Aerospace},  {"Freight", ESector::Transport},       {"Petroleum", ESector::Energy},
     {"Power", ESector::Utilities},     {"Metals", ESector::Materials},        {"Networks", ESector::Telecom},
     {"Properties", ESector::Property}, {"Resorts", ESector::Leisure}}};
constexpr std::array<std::string_view, 4> kForms = {"Inc.", "Corp.", "Group", "Holdings"};

constexpr std::array<SSector, 21> kSectors = {{
    {ESector::Technology, 0.016, 3571, 334111, 1.15}, {ESector::Semiconductors, 0.024, 3674, 334413, 1.45},
    {ESector::Software, 0.020, 7372, 513210, 1.25},   {ESector::Media, 0.021, 7370, 519290, 1.20},
    {ESector::Retail, 0.017, 5331, 455211, 0.95},     {ESector::Consumer, 0.011, 2080, 312111, 0.60},
    {ESector::Autos, 0.028, 3711, 336110, 1.60},      {ESector::Banks, 0.016, 6021, 522110, 1.15},
    {ESector::Insurance, 0.013, 6331, 524126, 0.75},  {ESector::Health, 0.013, 6324, 524114, 0.70},
    {ESector::Pharma, 0.017, 2834, 325412, 0.65},     {ESector::Industry, 0.013, 3559, 333248, 1.00},
    {ESector::Aerospace, 0.015, 3721, 336411, 0.90},  {ESector::Transport, 0.018, 4213, 484121, 1.10},
    {ESector::Energy, 0.016, 2911, 324110, 1.05},     {ESector::Utilities, 0.012, 4911, 221112, 0.50},
    {ESector::Materials, 0.019, 3312, 331110, 1.15},  {ESector::Telecom, 0.012, 4813, 517111, 0.65},
    {ESector::Property, 0.015, 6798, 525990, 0.95},   {ESector::Leisure, 0.019, 7011, 721110, 1.20},
    {ESector::Fund, 0.010, 6726, 525910, 1.00},
}};

constexpr bool InEnumOrder() {
    for (size_t i = 0; i < kSectors.size(); ++i)
        if (static_cast<size_t>(kSectors[i].sector) != i) return false;
    return true;
}
static_assert(InEnumOrder());

} // namespace

const SSector& SectorOf(ESector sector) { return kSectors[static_cast<size_t>(sector)]; }

SMadeUpTicker MakeTicker(uint32_t number, uint64_t seed) { return MakeTicker(fmt::format("S{:05}", number), {}, seed); }

SMadeUpTicker MakeTicker(std::string symbol, std::string_view firstWord, uint64_t seed) {
    SMadeUpTicker out;
    out.symbol = std::move(symbol);
    CRandom random(SymbolSeed(seed, out.symbol));
    const STrade& trade = kTrades[random.Below(kTrades.size())];
    const std::string_view drawn = kFirstWords[random.Below(kFirstWords.size())];
    const std::string_view form = kForms[random.Below(kForms.size())];
    out.name = fmt::format("{} {} {}", firstWord.empty() ? drawn : firstWord, trade.word, form);
    STicker& ticker = out.ticker;
    ticker.sector = trade.sector;
    const double spread = random.Unit();
    ticker.price = random.Below(20) == 0 ? random.Between(0.2, 0.99) : 2 + 400 * spread * spread * spread;
    ticker.sharesMillions = random.Between(8, 900);
    ticker.earnings = ticker.price / random.Between(-15, 45);
    ticker.dividend = random.Below(3) == 0 ? ticker.price * random.Between(0.005, 0.05) : 0;
    ticker.volumeMillions = ticker.sharesMillions * random.Between(0.002, 0.015);
    return out;
}

uint32_t MadeUpNumber(std::string_view symbol) {
    if (symbol.size() != 6 || symbol[0] != 'S') return 0;
    uint32_t number = 0;
    for (const char c : symbol.substr(1)) {
        if (c < '0' || c > '9') return 0;
        number = number * 10 + static_cast<uint32_t>(c - '0');
    }
    return number;
}

namespace {

using enum ESector;

// clang-format off
// symbol, name, sector, close, shares (millions), earnings, dividend, volume a day (millions)
constexpr auto kKnown = std::to_array<STicker>({
    {"AAPL", "Apple Inc.", Technology, 188.0, 15500, 6.15, 0.96, 55},
    {"MSFT", "Microsoft Corp.", Software, 404.0, 7430, 11.05, 3.00, 24},
    {"GOOGL", "Alphabet Inc. Class A", Media, 146.0, 5900, 5.80, 0, 28},
    {"GOOG", "Alphabet Inc. Class C", Media, 147.5, 5700, 5.80, 0, 20},
    {"AMZN", "Amazon.com Inc.", Retail, 158.0, 10330, 2.90, 0, 45},
    {"META", "Meta Platforms Inc.", Media, 396.0, 2570, 14.87, 2.00, 17},
    {"NVDA", "NVIDIA Corp.", Semiconductors, 620.0, 2470, 7.57, 0.16, 42},
    {"TSLA", "Tesla Inc.", Autos, 190.0, 3180, 4.30, 0, 110},
    {"AMD", "Advanced Micro Devices Inc.", Semiconductors, 171.0, 1615, 0.53, 0, 68},
    {"INTC", "Intel Corp.", Semiconductors, 43.0, 4220, 0.40, 0.50, 45},
    {"AVGO", "Broadcom Inc.", Semiconductors, 1210.0, 468, 32.98, 21.00, 2.6},
    {"QCOM", "Qualcomm Inc.", Semiconductors, 149.0, 1115, 6.42, 3.20, 8.4},
    {"TXN", "Texas Instruments Inc.", Semiconductors, 161.0, 909, 7.07, 5.20, 5.6},
    {"MU", "Micron Technology Inc.", Semiconductors, 86.5, 1104, -6.21, 0.46, 15},
    {"AMAT", "Applied Materials Inc.", Semiconductors, 166.0, 831, 8.16, 1.28, 6.1},
    {"LRCX", "Lam Research Corp.", Semiconductors, 828.0, 131, 26.5, 8.00, 1.0},
    {"KLAC", "KLA Corp.", Semiconductors, 596.0, 135, 20.3, 5.80, 0.9},
    {"ADI", "Analog Devices Inc.", Semiconductors, 193.0, 496, 6.55, 3.44, 3.2},
    {"MRVL", "Marvell Technology Inc.", Semiconductors, 67.9, 865, -0.60, 0.24, 12},
    {"ON", "ON Semiconductor Corp.", Semiconductors, 71.3, 431, 4.89, 0, 7.3},
    {"ASML", "ASML Holding N.V.", Semiconductors, 870.0, 394, 21.7, 6.40, 1.2},
    {"TSM", "Taiwan Semiconductor ADR", Semiconductors, 113.5, 5186, 5.18, 1.90, 11},
    {"ORCL", "Oracle Corp.", Software, 112.0, 2748, 3.61, 1.60, 9.5},
    {"CRM", "Salesforce Inc.", Software, 281.0, 968, 2.63, 0, 5.6},
    {"ADBE", "Adobe Inc.", Software, 618.0, 452, 11.82, 0, 2.9},
    {"NOW", "ServiceNow Inc.", Software, 766.0, 205, 8.42, 0, 1.2},
    {"INTU", "Intuit Inc.", Software, 632.0, 280, 8.96, 3.60, 1.3},
    {"SNOW", "Snowflake Inc.", Software, 196.0, 329, -2.60, 0, 5.0},
    {"PLTR", "Palantir Technologies Inc.", Software, 16.1, 2180, 0.07, 0, 44},
    {"PANW", "Palo Alto Networks Inc.", Software, 338.5, 315, 6.40, 0, 4.2},
    {"CRWD", "CrowdStrike Holdings Inc.", Software, 292.5, 240, 0.05, 0, 3.3},
    {"DDOG", "Datadog Inc.", Software, 124.4, 330, -0.10, 0, 3.6},
    {"ZM", "Zoom Video Communications", Software, 64.6, 304, 0.73, 0, 3.1},
    {"SHOP", "Shopify Inc.", Software, 80.1, 1285, -0.90, 0, 10},
    {"UBER", "Uber Technologies Inc.", Transport, 65.3, 2058, 0.52, 0, 18},
    {"LYFT", "Lyft Inc.", Transport, 12.5, 390, -1.05, 0, 14},
    {"ABNB", "Airbnb Inc.", Leisure, 144.1, 638, 8.20, 0, 4.7},
    {"SQ", "Block Inc.", Banks, 65.0, 613, -0.40, 0, 10},
    {"PYPL", "PayPal Holdings Inc.", Banks, 61.4, 1078, 3.35, 0, 16},
    {"COIN", "Coinbase Global Inc.", Banks, 128.2, 238, -3.30, 0, 11},
    {"HOOD", "Robinhood Markets Inc.", Banks, 10.7, 871, -0.70, 0, 9.8},
    {"SOFI", "SoFi Technologies Inc.", Banks, 7.83, 957, -0.36, 0, 36},
    {"IBM", "International Business Machines", Technology, 183.7, 914, 8.14, 6.64, 4.4},
    {"CSCO", "Cisco Systems Inc.", Technology, 50.2, 4060, 3.30, 1.56, 17},
    {"HPQ", "HP Inc.", Technology, 28.7, 989, 3.26, 1.10, 7.7},
    {"HPE", "Hewlett Packard Enterprise Co.", Technology, 15.3, 1300, 1.54, 0.52, 14},
    {"DELL", "Dell Technologies Inc.", Technology, 82.9, 712, 3.68, 1.48, 5.0},
    {"SMCI", "Super Micro Computer Inc.", Technology, 529.6, 55.9, 12.8, 0, 5.8},
    {"WDC", "Western Digital Corp.", Technology, 57.3, 325, -6.20, 0, 5.4},
    {"STX", "Seagate Technology Holdings", Technology, 85.7, 209, -3.00, 2.80, 2.3},
    {"NFLX", "Netflix Inc.", Media, 564.0, 433, 12.03, 0, 5.2},
    {"DIS", "Walt Disney Co.", Media, 96.1, 1834, 1.28, 0.60, 10},
    {"CMCSA", "Comcast Corp.", Media, 46.5, 3980, 3.71, 1.16, 18},
    {"WBD", "Warner Bros. Discovery Inc.", Media, 10.0, 2440, -1.60, 0, 22},
    {"SPOT", "Spotify Technology S.A.", Media, 215.4, 196, -2.73, 0, 1.9},
    {"ROKU", "Roku Inc.", Media, 88.1, 142, -5.50, 0, 5.5},
    {"SNAP", "Snap Inc.", Media, 15.9, 1645, -0.82, 0, 25},
    {"PINS", "Pinterest Inc.", Media, 37.5, 675, -0.05, 0, 10},
    {"RBLX", "Roblox Corp.", Leisure, 38.8, 620, -1.90, 0, 8.4},
    {"EA", "Electronic Arts Inc.", Leisure, 137.6, 269, 3.90, 0.76, 2.1},
    {"TTWO", "Take-Two Interactive Software", Leisure, 164.9, 170, -8.50, 0, 1.6},
    {"T", "AT&T Inc.", Telecom, 17.7, 7150, 1.97, 1.11, 38},
    {"VZ", "Verizon Communications Inc.", Telecom, 42.3, 4204, 2.75, 2.66, 21},
    {"TMUS", "T-Mobile US Inc.", Telecom, 161.2, 1186, 6.93, 2.60, 4.4},
    {"JPM", "JPMorgan Chase & Co.", Banks, 174.4, 2891, 16.23, 4.20, 9.1},
    {"BAC", "Bank of America Corp.", Banks, 34.0, 7913, 3.08, 0.96, 42},
    {"WFC", "Wells Fargo & Co.", Banks, 50.2, 3632, 4.83, 1.40, 18},
    {"C", "Citigroup Inc.", Banks, 56.2, 1914, 4.04, 2.12, 16},
    {"GS", "Goldman Sachs Group Inc.", Banks, 384.0, 326, 22.87, 11.00, 2.3},
    {"MS", "Morgan Stanley", Banks, 87.2, 1641, 5.18, 3.40, 8.3},
    {"SCHW", "Charles Schwab Corp.", Banks, 62.9, 1772, 2.54, 1.00, 9.8},
    {"BLK", "BlackRock Inc.", Banks, 774.3, 148, 36.51, 20.40, 0.6},
    {"AXP", "American Express Co.", Banks, 200.7, 723, 11.21, 2.40, 3.5},
    {"V", "Visa Inc.", Banks, 273.3, 1581, 8.53, 2.08, 5.9},
    {"MA", "Mastercard Inc.", Banks, 449.2, 933, 11.83, 2.64, 2.5},
    {"COF", "Capital One Financial Corp.", Banks, 135.3, 380, 11.95, 2.40, 2.2},
    {"USB", "U.S. Bancorp", Banks, 41.5, 1557, 3.27, 1.96, 9.9},
    {"PNC", "PNC Financial Services Group", Banks, 151.2, 398, 12.79, 6.20, 2.1},
    {"TFC", "Truist Financial Corp.", Banks, 37.1, 1334, -1.09, 2.08, 9.2},
    {"BK", "Bank of New York Mellon Corp.", Banks, 55.5, 759, 4.00, 1.68, 4.2},
    {"NLY", "Annaly Capital Management Inc.", Property, 19.2, 500, -3.60, 2.60, 5.0},
    {"BRK.B", "Berkshire Hathaway Inc. Class B", Insurance, 383.7, 1310, 35.2, 0, 3.4},
    {"AIG", "American International Group", Insurance, 69.5, 702, 4.98, 1.44, 4.0},
    {"MET", "MetLife Inc.", Insurance, 69.3, 740, 1.81, 2.08, 3.5},
    {"PRU", "Prudential Financial Inc.", Insurance, 104.9, 361, 6.74, 5.20, 1.6},
    {"TRV", "Travelers Companies Inc.", Insurance, 211.4, 228, 12.79, 4.00, 1.4},
    {"ALL", "Allstate Corp.", Insurance, 155.3, 262, -1.20, 3.68, 1.6},
    {"PGR", "Progressive Corp.", Insurance, 178.3, 585, 6.58, 0.40, 2.8},
    {"UNH", "UnitedHealth Group Inc.", Health, 511.7, 925, 23.86, 7.52, 3.9},
    {"CVS", "CVS Health Corp.", Health, 74.4, 1287, 6.47, 2.66, 8.5},
    {"CI", "Cigna Group", Health, 301.0, 293, 17.4, 5.60, 1.7},
    {"ELV", "Elevance Health Inc.", Health, 493.4, 233, 25.22, 6.52, 1.2},
    {"HUM", "Humana Inc.", Health, 378.1, 122, 20.0, 3.54, 2.0},
    {"HCA", "HCA Healthcare Inc.", Health, 304.9, 265, 18.97, 2.64, 1.4},
    {"ABT", "Abbott Laboratories", Health, 113.2, 1736, 3.26, 2.20, 5.3},
    {"MDT", "Medtronic plc", Health, 87.5, 1330, 3.05, 2.76, 5.8},
    {"TMO", "Thermo Fisher Scientific Inc.", Health, 539.0, 386, 15.45, 1.56, 1.6},
    {"DHR", "Danaher Corp.", Health, 239.9, 739, 6.38, 0.96, 3.0},
    {"ISRG", "Intuitive Surgical Inc.", Health, 378.2, 352, 5.03, 0, 1.5},
    {"SYK", "Stryker Corp.", Health, 335.5, 380, 8.25, 3.20, 1.2},
    {"BSX", "Boston Scientific Corp.", Health, 63.3, 1465, 1.07, 0, 7.0},
    {"JNJ", "Johnson & Johnson", Pharma, 158.9, 2407, 5.20, 4.76, 7.2},
    {"PFE", "Pfizer Inc.", Pharma, 27.1, 5646, 0.37, 1.68, 43},
    {"MRK", "Merck & Co. Inc.", Pharma, 120.8, 2534, 0.14, 3.08, 8.6},
    {"LLY", "Eli Lilly and Co.", Pharma, 645.6, 950, 5.80, 5.20, 2.9},
    {"ABBV", "AbbVie Inc.", Pharma, 164.4, 1766, 2.72, 6.20, 5.4},
    {"BMY", "Bristol-Myers Squibb Co.", Pharma, 48.9, 2035, 3.86, 2.40, 15},
    {"AMGN", "Amgen Inc.", Pharma, 314.3, 535, 12.49, 9.00, 2.8},
    {"GILD", "Gilead Sciences Inc.", Pharma, 78.3, 1246, 4.50, 3.08, 6.6},
    {"MRNA", "Moderna Inc.", Pharma, 101.1, 381, -9.50, 0, 4.7},
    {"BIIB", "Biogen Inc.", Pharma, 246.7, 145, 8.00, 0, 1.0},
    {"VRTX", "Vertex Pharmaceuticals Inc.", Pharma, 433.4, 258, 13.89, 0, 1.2},
    {"REGN", "Regeneron Pharmaceuticals Inc.", Pharma, 942.8, 108, 34.77, 0, 0.5},
    {"ZTS", "Zoetis Inc.", Pharma, 187.8, 459, 5.07, 1.73, 2.0},
    {"NVO", "Novo Nordisk ADR", Pharma, 114.7, 3370, 2.70, 0.93, 4.9},
    {"WMT", "Walmart Inc.", Retail, 165.2, 2692, 5.94, 2.28, 7.0},
    {"COST", "Costco Wholesale Corp.", Retail, 694.9, 444, 14.73, 4.08, 2.1},
    {"TGT", "Target Corp.", Retail, 139.1, 462, 7.83, 4.40, 3.8},
    {"HD", "Home Depot Inc.", Retail, 353.0, 995, 15.11, 8.36, 3.4},
    {"LOW", "Lowe's Companies Inc.", Retail, 212.8, 575, 12.96, 4.40, 2.8},
    {"BBY", "Best Buy Co. Inc.", Retail, 72.5, 215, 5.80, 3.68, 3.0},
    {"KR", "Kroger Co.", Retail, 46.1, 719, 2.60, 1.16, 4.9},
    {"DG", "Dollar General Corp.", Retail, 132.1, 219, 8.70, 2.36, 2.8},
    {"DLTR", "Dollar Tree Inc.", Retail, 130.6, 218, 5.00, 0, 2.1},
    {"EBAY", "eBay Inc.", Retail, 41.1, 519, 2.47, 1.00, 6.0},
    {"ETSY", "Etsy Inc.", Retail, 66.6, 119, 2.30, 0, 4.3},
    {"GME", "GameStop Corp.", Retail, 14.2, 305, -0.06, 0, 4.6},
    {"BABA", "Alibaba Group Holding ADR", Retail, 72.2, 2541, 6.60, 1.00, 17},
    {"JD", "JD.com Inc. ADR", Retail, 22.6, 1570, 2.00, 0.62, 12},
    {"PDD", "PDD Holdings Inc. ADR", Retail, 126.9, 1350, 4.80, 0, 9.9},
    {"BIDU", "Baidu Inc. ADR", Media, 105.3, 351, 8.00, 0, 2.6},
    {"NKE", "Nike Inc.", Consumer, 101.5, 1518, 3.41, 1.48, 8.4},
    {"LULU", "Lululemon Athletica Inc.", Consumer, 453.8, 126, 7.79, 0, 1.4},
    {"SBUX", "Starbucks Corp.", Leisure, 93.0, 1133, 3.73, 2.28, 8.3},
    {"MCD", "McDonald's Corp.", Leisure, 292.7, 725, 11.56, 6.68, 2.9},
    {"YUM", "Yum! Brands Inc.", Leisure, 129.5, 281, 5.59, 2.42, 1.7},
    {"CMG", "Chipotle Mexican Grill Inc.", Leisure, 2408.0, 27.4, 44.34, 0, 0.24},
    {"KO", "Coca-Cola Co.", Consumer, 59.5, 4323, 2.47, 1.84, 13},
    {"PEP", "PepsiCo Inc.", Consumer, 168.5, 1375, 6.56, 5.06, 5.3},
    {"PG", "Procter & Gamble Co.", Consumer, 157.1, 2353, 5.90, 3.76, 6.9},
    {"CL", "Colgate-Palmolive Co.", Consumer, 84.2, 823, 2.77, 1.92, 4.4},
    {"KMB", "Kimberly-Clark Corp.", Consumer, 121.0, 338, 5.21, 4.72, 2.1},
    {"MO", "Altria Group Inc.", Consumer, 40.1, 1769, 4.57, 3.92, 9.9},
    {"PM", "Philip Morris International", Consumer, 90.9, 1552, 5.02, 5.20, 5.1},
    {"MDLZ", "Mondelez International Inc.", Consumer, 75.3, 1361, 3.62, 1.70, 6.6},
    {"KHC", "Kraft Heinz Co.", Consumer, 37.1, 1227, 2.31, 1.60, 7.0},
    {"GIS", "General Mills Inc.", Consumer, 64.9, 568, 4.37, 2.36, 4.1},
    {"K", "Kellanova", Consumer, 54.8, 341, 2.25, 2.24, 2.9},
    {"HSY", "Hershey Co.", Consumer, 193.5, 205, 9.06, 5.48, 1.7},
    {"EL", "Estee Lauder Companies Inc.", Consumer, 132.0, 358, 1.10, 2.64, 3.2},
    {"F", "Ford Motor Co.", Autos, 11.7, 4003, 1.08, 0.60, 52},
    {"GM", "General Motors Co.", Autos, 38.8, 1369, 7.32, 0.48, 17},
    {"TM", "Toyota Motor Corp. ADR", Autos, 199.6, 1348, 19.5, 4.00, 0.4},
    {"RIVN", "Rivian Automotive Inc.", Autos, 15.3, 958, -6.10, 0, 36},
    {"LCID", "Lucid Group Inc.", Autos, 3.38, 2290, -1.40, 0, 31},
    {"NIO", "NIO Inc. ADR", Autos, 5.62, 1650, -1.70, 0, 52},
    {"BA", "Boeing Co.", Aerospace, 211.0, 610, -3.67, 0, 10},
    {"LMT", "Lockheed Martin Corp.", Aerospace, 429.4, 242, 27.55, 12.60, 1.3},
    {"RTX", "RTX Corp.", Aerospace, 91.1, 1330, 2.23, 2.36, 7.6},
    {"NOC", "Northrop Grumman Corp.", Aerospace, 446.8, 150, 13.53, 7.48, 1.0},
    {"GD", "General Dynamics Corp.", Aerospace, 265.0, 273, 12.02, 5.28, 1.2},
    {"GE", "General Electric Co.", Aerospace, 132.4, 1088, 7.98, 0.32, 5.6},
    {"HON", "Honeywell International Inc.", Industry, 202.3, 659, 8.47, 4.32, 3.2},
    {"MMM", "3M Co.", Industry, 94.4, 552, -12.63, 6.00, 5.1},
    {"CAT", "Caterpillar Inc.", Industry, 300.3, 509, 20.12, 5.20, 2.9},
    {"DE", "Deere & Co.", Industry, 393.6, 280, 34.63, 5.88, 1.5},
    {"EMR", "Emerson Electric Co.", Industry, 91.7, 570, 3.96, 2.10, 2.9},
    {"ETN", "Eaton Corp. plc", Industry, 246.1, 399, 8.02, 3.44, 2.0},
    {"ITW", "Illinois Tool Works Inc.", Industry, 260.9, 301, 9.74, 5.60, 1.0},
    {"WM", "Waste Management Inc.", Industry, 185.6, 403, 5.66, 2.80, 1.7},
    {"UPS", "United Parcel Service Inc.", Transport, 141.9, 853, 7.80, 6.52, 4.4},
    {"FDX", "FedEx Corp.", Transport, 241.3, 250, 17.0, 5.04, 1.8},
    {"UNP", "Union Pacific Corp.", Transport, 243.9, 610, 10.45, 5.20, 2.5},
    {"CSX", "CSX Corp.", Transport, 35.7, 1976, 1.85, 0.48, 12},
    {"NSC", "Norfolk Southern Corp.", Transport, 235.2, 226, 8.02, 5.40, 1.2},
    {"DAL", "Delta Air Lines Inc.", Transport, 39.1, 643, 7.17, 0.40, 11},
    {"UAL", "United Airlines Holdings Inc.", Transport, 41.4, 328, 7.89, 0, 8.0},
    {"AAL", "American Airlines Group Inc.", Transport, 14.2, 654, 1.21, 0, 33},
    {"LUV", "Southwest Airlines Co.", Transport, 29.9, 596, 0.76, 0.72, 9.0},
    {"CCL", "Carnival Corp.", Leisure, 16.6, 1120, -0.06, 0, 30},
    {"RCL", "Royal Caribbean Cruises Ltd.", Leisure, 127.5, 256, 6.31, 0, 3.3},
    {"MAR", "Marriott International Inc.", Leisure, 239.7, 294, 9.74, 2.08, 1.7},
    {"BKNG", "Booking Holdings Inc.", Leisure, 3507.0, 34.9, 135.0, 0, 0.27},
    {"XOM", "Exxon Mobil Corp.", Energy, 102.8, 3963, 8.89, 3.80, 19},
    {"CVX", "Chevron Corp.", Energy, 147.4, 1888, 11.36, 6.04, 8.9},
    {"COP", "ConocoPhillips", Energy, 111.9, 1188, 9.06, 2.32, 5.6},
    {"OXY", "Occidental Petroleum Corp.", Energy, 57.6, 880, 3.90, 0.88, 8.9},
    {"SLB", "Schlumberger Ltd.", Energy, 48.7, 1427, 2.91, 1.10, 10},
    {"HAL", "Halliburton Co.", Energy, 35.7, 892, 2.92, 0.68, 8.6},
    {"EOG", "EOG Resources Inc.", Energy, 113.8, 583, 13.0, 3.64, 3.5},
    {"PSX", "Phillips 66", Energy, 144.3, 440, 15.48, 4.20, 2.9},
    {"VLO", "Valero Energy Corp.", Energy, 138.9, 340, 24.92, 4.28, 3.7},
    {"KMI", "Kinder Morgan Inc.", Energy, 16.9, 2223, 1.06, 1.13, 14},
    {"BP", "BP plc ADR", Energy, 35.1, 2840, 5.30, 1.70, 9.5},
    {"SHEL", "Shell plc ADR", Energy, 62.9, 3240, 5.80, 2.64, 4.9},
    {"NEE", "NextEra Energy Inc.", Utilities, 58.6, 2052, 3.60, 1.87, 14},
    {"DUK", "Duke Energy Corp.", Utilities, 95.8, 771, 3.54, 4.10, 3.3},
    {"SO", "Southern Co.", Utilities, 69.5, 1091, 3.62, 2.80, 4.5},
    {"EXC", "Exelon Corp.", Utilities, 34.8, 999, 2.34, 1.44, 8.5},
    {"LIN", "Linde plc", Materials, 404.8, 483, 12.59, 5.10, 1.8},
    {"DOW", "Dow Inc.", Materials, 53.6, 702, 0.82, 2.80, 4.6},
    {"FCX", "Freeport-McMoRan Inc.", Materials, 39.7, 1434, 1.28, 0.60, 12},
    {"NEM", "Newmont Corp.", Materials, 34.5, 1153, -2.10, 1.60, 12},
    {"AA", "Alcoa Corp.", Materials, 29.8, 178, -3.65, 0.40, 6.1},
    {"NUE", "Nucor Corp.", Materials, 186.9, 246, 18.0, 2.16, 1.6},
    {"AMT", "American Tower Corp.", Property, 195.7, 466, 3.18, 6.80, 2.3},
    {"PLD", "Prologis Inc.", Property, 126.7, 924, 3.29, 3.48, 3.6},
    {"O", "Realty Income Corp.", Property, 54.4, 752, 1.26, 3.07, 7.2},
    {"AMC", "AMC Entertainment Holdings", Leisure, 4.07, 263, -2.37, 0, 15},
    {"TLRY", "Tilray Brands Inc.", Pharma, 1.80, 740, -2.10, 0, 19},
    {"SNDL", "SNDL Inc.", Pharma, 1.40, 262, -0.40, 0, 2.8},
    {"NKLA", "Nikola Corp.", Autos, 0.72, 1330, -1.10, 0, 61},
    {"SPY", "S&P 500 Index Fund", Fund, 487.0, 935, 19.9, 6.63, 78},
    {"QQQ", "Nasdaq-100 Index Fund", Fund, 423.0, 560, 12.8, 2.54, 46},
    {"DIA", "Dow Jones Industrial Average Fund", Fund, 384.0, 84, 18.1, 6.70, 3.4},
    {"IWM", "Russell 2000 Index Fund", Fund, 196.0, 305, 12.0, 2.67, 37},
    {"VTI", "Total Stock Market Fund", Fund, 241.0, 1440, 10.6, 3.40, 3.3},
    {"VOO", "S&P 500 Low Cost Fund", Fund, 447.5, 860, 18.3, 6.36, 5.4},
    {"EEM", "Emerging Markets Fund", Fund, 38.9, 460, 3.00, 1.00, 32},
    {"EFA", "Developed Markets Fund", Fund, 75.2, 680, 5.60, 2.20, 17},
    {"GLD", "Gold Bullion Fund", Fund, 188.5, 290, 0, 0, 6.5},
    {"SLV", "Silver Bullion Fund", Fund, 21.0, 475, 0, 0, 17},
    {"USO", "Crude Oil Fund", Fund, 71.0, 19, 0, 0, 4.3},
    {"TLT", "Treasury Bond 20+ Year Fund", Fund, 96.3, 520, 0, 3.40, 44},
    {"HYG", "High Yield Bond Fund", Fund, 77.3, 240, 0, 4.50, 37},
    {"LQD", "Investment Grade Bond Fund", Fund, 109.8, 300, 0, 4.50, 24},
    {"XLF", "Financial Sector Fund", Fund, 38.7, 880, 2.60, 0.65, 42},
    {"XLK", "Technology Sector Fund", Fund, 198.0, 300, 5.80, 1.48, 6.7},
    {"XLE", "Energy Sector Fund", Fund, 83.5, 430, 10.6, 2.98, 18},
    {"XLV", "Health Care Sector Fund", Fund, 140.5, 280, 7.20, 2.17, 8.5},
    {"ARKK", "Innovation Fund", Fund, 46.3, 175, 0, 0, 16},
    {"SMH", "Semiconductor Fund", Fund, 184.2, 70, 5.20, 1.04, 7.5},
});
// clang-format on

} // namespace

std::span<const STicker> KnownTickers() { return kKnown; }

} // namespace vx::sim
