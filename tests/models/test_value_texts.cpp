// The rows and the parameter kinds write numbers with their own fast conversions, without Qt; these
// must give exactly the texts of the string class's conversions that the rows' texts are defined by.
#include <vorn/models/private/ValueTexts.h>

#include <vorn/host/ParameterText.h>

#include <QRegularExpression>
#include <QString>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

using namespace vorn::core;

namespace {

QString qtFloat(double value)
{
    return QStringLiteral("%1").arg(value, 0, 'g', -1);
}

QString qtDigits(long long value, int base)
{
    if (value >= 0)
        return QString::number(value, base);
    return QLatin1Char('-') + QString::number(0ull - static_cast<unsigned long long>(value), base);
}

double fromBits(std::uint64_t bits)
{
    double value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

} // namespace

TEST(ValueTextTest, floatsReadAsTheStringClassWritesThem)
{
    std::vector<double> values{0.0,
                               -0.0,
                               1.0,
                               -1.0,
                               0.5,
                               0.25,
                               29.97,
                               41.5,
                               1e6,
                               999999.0,
                               999999.5,
                               9999995.0,
                               123456789.0,
                               1e-4,
                               1e-5,
                               0.000123456789,
                               std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::lowest(),
                               std::numeric_limits<double>::min(),
                               std::numeric_limits<double>::denorm_min(),
                               std::numeric_limits<double>::infinity(),
                               -std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN(),
                               -std::numeric_limits<double>::quiet_NaN()};
    for (int exponent = -320; exponent <= 308; ++exponent) {
        const double p = std::pow(10.0, exponent);
        for (double v : {p, std::nextafter(p, 0.0), std::nextafter(p, HUGE_VAL), 5 * p, 9.999995 * p,
                         9.9999949 * p, 1.0000005 * p})
            values.insert(values.end(), {v, -v});
    }
    std::mt19937_64 random(20261121);
    for (int i = 0; i < 200000; ++i)
        values.push_back(fromBits(random()));
    std::uniform_real_distribution<double> typical(-1e7, 1e7);
    for (int i = 0; i < 100000; ++i)
        values.push_back(typical(random));
    for (int i = 0; i < 100000; ++i)
        values.push_back(static_cast<double>(static_cast<std::int64_t>(random() % 20000000) - 10000000) / 4);
    for (int i = 0; i < 100000; ++i) {
        const auto n = static_cast<double>(random() % 1000000000);
        values.insert(values.end(), {n / 1000, n / 3, n * 1e-9, n * 1e12});
    }

    int differing = 0;
    for (double v : values) {
        const QString expected = qtFloat(v);
        const QString actual = QString::fromStdString(models::texts::floatText(v));
        if (actual != expected && differing++ < 10)
            ADD_FAILURE() << "value " << qPrintable(QString::number(v, 'g', 17)) << ": " << qPrintable(actual)
                          << " instead of " << qPrintable(expected);
    }
    EXPECT_EQ(differing, 0);
}

TEST(ValueTextTest, integerDigitsReadAsTheStringClassWritesThem)
{
    std::vector<long long> values{0,
                                  1,
                                  -1,
                                  255,
                                  -255,
                                  std::numeric_limits<long long>::max(),
                                  std::numeric_limits<long long>::min(),
                                  std::numeric_limits<long long>::min() + 1};
    std::mt19937_64 random(7);
    for (int i = 0; i < 100000; ++i) {
        const auto bits = random();
        values.push_back(static_cast<long long>(bits));
        values.push_back(static_cast<long long>(bits >> (bits % 64)));
    }
    for (long long v : values) {
        for (int base : {2, 10, 16}) {
            ASSERT_EQ(QString::fromStdString(models::texts::digits(v, base)), qtDigits(v, base))
                << v << " in base " << base;
            const auto u = static_cast<unsigned long long>(v);
            ASSERT_EQ(QString::fromStdString(models::texts::digits(u, base)), QString::number(u, base))
                << u << " in base " << base;
        }
    }
}

TEST(ValueTextTest, integerTextsCarryTheirUnitAfterOneBlank)
{
    EXPECT_EQ(rows::integerText(255ll, models::pirHexNumber, "ms"), QStringLiteral("0xff ms"));
    EXPECT_EQ(rows::integerText(-255ll, models::pirHexNumber, ""), QStringLiteral("0x-ff"));
    EXPECT_EQ(rows::integerText(18446744073709551615ull, models::pirLinear, "B"),
              QStringLiteral("18446744073709551615 B"));
    EXPECT_EQ(rows::integerText(-42ll, models::pirPureNumber, ""), QStringLiteral("-42"));
    EXPECT_EQ(rows::integerText(0xC0A80001ll, models::pirIPV4Address, "mm"), QStringLiteral("192.168.0.1"));
    EXPECT_EQ(rows::integerText(0x0000AABBCCDDEEFFull, models::pirMACAddress, ""),
              QStringLiteral("ff:ee:dd:cc:bb:aa"));
    EXPECT_EQ(rows::integerText(7ll, models::pirLinear, "\xB5s"), QString::fromLatin1("7 \xB5s"));
    // The parameter kinds write the same texts as bytes.
    EXPECT_EQ(models::texts::integerText(255ll, models::pirHexNumber, "ms"), "0xff ms");
    EXPECT_EQ(models::texts::integerText(0xC0A80001ll, models::pirIPV4Address, "mm"), "192.168.0.1");
    EXPECT_EQ(models::texts::integerText(0x0000AABBCCDDEEFFull, models::pirMACAddress, ""),
              "ff:ee:dd:cc:bb:aa");
    EXPECT_EQ(models::texts::integerText(0x0102ll, models::pirMACAddress, ""), "02:01:00:00:00:00");
}

// Messages are filled in one argument after the other, as QString::arg does: the lowest placeholder
// number takes the argument wherever it stands, so a later argument fills the next number, even one
// that an earlier argument brought in.
TEST(ValueTextTest, argumentsFillPlaceholdersAsTheStringClassDoes)
{
    const std::vector<std::vector<std::string>> cases{
        {"Illegal number (%1): The value of <b>%2</b> must be between %3 and %4 (stepsize %5).", "7", "Width",
         "0", "10", "0"},
        {"%2 before %1, %1 twice", "a", "b"},
        {"%1 brings %2 in", "x%2y", "z"},
        {"no placeholder", "unused"},
        {"%L1 and %01 and %10 and %9", "one", "two", "three"},
        {"%% and %a and 100%", "x"},
        {"%99 %100 %0", "a", "b", "c"},
    };
    for (const auto& c : cases) {
        std::string ours = c[0];
        QString qts = QString::fromStdString(c[0]);
        for (std::size_t i = 1; i < c.size(); ++i) {
            ours = models::texts::arg(ours, c[i]);
            // Qt warns when nothing is left to fill; the text stays as it is, as ours does.
            if (qts.contains(QRegularExpression(QStringLiteral("%L?\\d"))))
                qts = qts.arg(QString::fromStdString(c[i]));
        }
        EXPECT_EQ(QString::fromStdString(ours), qts) << c[0];
    }
}

TEST(ValueTextTest, piecesJoinIntoOneText)
{
    EXPECT_EQ(rows::latin1Text(
                  {QLatin1String("[3] "), QLatin1String("0.5"), QLatin1String(" "), QLatin1String("V")}),
              QStringLiteral("[3] 0.5 V"));
    const QString empty = rows::latin1Text({QLatin1String(), QLatin1String("")});
    EXPECT_TRUE(empty.isEmpty());
    EXPECT_FALSE(empty.isNull());
}
