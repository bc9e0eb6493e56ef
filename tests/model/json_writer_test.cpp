// SPDX-License-Identifier: MIT
#include "model/json_writer.h"

#include "support/test_case.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>

#include <array>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

namespace wrenfold {

namespace {

template<typename Write>
QByteArray written(Write write)
{
    JsonWriter json;
    write(json);
    return json.take();
}

/// The first element of a written array, as Qt's own reader sees it.
template<typename Write>
QJsonValue readBack(Write write)
{
    const QByteArray bytes = written([&write](JsonWriter &json) {
        json.beginArray();
        write(json);
        json.endArray();
    });
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError)
        QTest::qFail(qPrintable(error.errorString()), __FILE__, __LINE__);
    return document.array().at(0);
}

QString textReadBack(const QString &text)
{
    return readBack([&text](JsonWriter &json) { json.string(text); }).toString();
}

/// Read without Qt's JSON, which makes an integer of every number that is whole.
double numberReadBack(double number)
{
    return written([number](JsonWriter &json) { json.number(number); }).toDouble();
}

} // namespace

class JsonWriterTest : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void objectsAndArraysAreCompactAndSeparatedByCommas()
    {
        const QByteArray bytes = written([](JsonWriter &json) {
            json.beginObject();
            json.key("a");
            json.beginArray();
            json.endArray();
            json.key("b");
            json.beginArray();
            json.integer(1);
            json.boolean(true);
            json.beginObject();
            json.endObject();
            json.beginObject();
            json.key("c");
            json.string(u"d");
            json.endObject();
            json.boolean(false);
            json.endArray();
            json.key("e");
            json.number(0.5);
            json.endObject();
        });
        QCOMPARE(bytes, QByteArray(R"({"a":[],"b":[1,true,{},{"c":"d"},false],"e":0.5})"));
    }

    void quotesBackslashesAndControlCharactersAreEscaped()
    {
        const QByteArray bytes =
            written([](JsonWriter &json) { json.string(QStringLiteral("\"\\/\n\u0001\u001F\u007F")); });
        QCOMPARE(bytes, QByteArray("\"\\\"\\\\/\\u000A\\u0001\\u001F\x7F\""));
    }

    void everythingElseIsWrittenAsItIs()
    {
        const QString text = QStringLiteral("今日 é 👍 \u2028 \uFFFF");
        QCOMPARE(written([&text](JsonWriter &json) { json.string(text); }), '"' + text.toUtf8() + '"');
    }

    void everyUnitAloneIsReadBack()
    {
        for (int unit = 0; unit <= 0xFFFF; ++unit) {
            const QString text{QChar(char16_t(unit))};
            if (textReadBack(text) != text)
                QFAIL(qPrintable(QStringLiteral("the unit %1").arg(unit, 4, 16, QLatin1Char('0'))));
        }
    }

    void surrogatesWithoutPartnersAreReadBack_data()
    {
        QTest::addColumn<QString>("text");
        const QChar high(0xD83D);
        const QChar low(0xDE00);
        const QString a = QStringLiteral("a");
        QTest::newRow("high at the end") << a + high;
        QTest::newRow("low at the start") << low + a;
        QTest::newRow("wrong order") << QString(low) + high;
        QTest::newRow("two high") << QString(high) + high + low;
        QTest::newRow("two low") << QString(high) + low + low;
        QTest::newRow("between") << a + high + a + low + a;
    }

    void surrogatesWithoutPartnersAreReadBack()
    {
        QFETCH(QString, text);
        QCOMPARE(textReadBack(text), text);
    }

    void randomTextsAreReadBack()
    {
        QRandomGenerator random(20260302);
        for (int round = 0; round < 2000; ++round) {
            QString text;
            for (int i = random.bounded(20); i > 0; --i) {
                // Half of the units are surrogates, so that pairs and halves are common.
                const int unit = random.bounded(2) ? random.bounded(0x10000) : 0xD800 + random.bounded(0x800);
                text.append(QChar(char16_t(unit)));
            }
            QCOMPARE(textReadBack(text), text);
        }
    }

    void integersAreReadBack()
    {
        for (const qint64 number : {qint64(0), qint64(-1), qint64(25), std::numeric_limits<qint64>::max(),
                                    std::numeric_limits<qint64>::min()}) {
            QCOMPARE(readBack([number](JsonWriter &json) { json.integer(number); }).toInteger(1), number);
        }
    }

    void numbersAreReadBackBitForBit_data()
    {
        QTest::addColumn<double>("number");
        QTest::newRow("0") << 0.0;
        QTest::newRow("-0") << -0.0;
        QTest::newRow("1") << 1.0;
        QTest::newRow("0.1") << 0.1;
        QTest::newRow("date") << 795484800.1234567;
        QTest::newRow("1e-300") << 1e-300;
        QTest::newRow("smallest") << 5e-324;
        QTest::newRow("smallest normal") << std::numeric_limits<double>::min();
        QTest::newRow("largest") << 1.7976931348623157e308;
        QTest::newRow("most negative") << -1.7976931348623157e308;
        QTest::newRow("2^53 + 2") << 9007199254740994.0;
        QTest::newRow("2^63") << 9223372036854775808.0;
        QTest::newRow("1e22") << 1e22;
    }

    void numbersAreReadBackBitForBit()
    {
        QFETCH(double, number);
        QCOMPARE(std::bit_cast<quint64>(numberReadBack(number)), std::bit_cast<quint64>(number));
    }

    void everyNumberIsAJsonNumber()
    {
        for (const double number :
             {0.0, -0.0, 1e-300, 5e-324, 1.7976931348623157e308, -0.1, 1e22, 123456789.0})
            QCOMPARE(readBack([number](JsonWriter &json) { json.number(number); }).toDouble(1), number);
    }

    void aNegativeZeroIsNoInteger()
    {
        QCOMPARE(written([](JsonWriter &json) { json.number(-0.0); }), QByteArray("-0.0"));
    }

    void randomNumbersAreReadBackBitForBit()
    {
        QRandomGenerator random(20260302);
        for (int round = 0; round < 20000; ++round) {
            const quint64 bits = random.generate64();
            const auto number = std::bit_cast<double>(bits);
            if (std::isfinite(number))
                QCOMPARE(std::bit_cast<quint64>(numberReadBack(number)), bits);
        }
    }

    void thousandthsAreTheShortestTextAsAnyOtherNumber()
    {
        QRandomGenerator random(20261122);
        std::array<char, 32> shortest;
        const auto isShortest = [&shortest](double number) {
            const char *end = std::to_chars(shortest.begin(), shortest.end(), number).ptr;
            return written([number](JsonWriter &json) { json.number(number); }) ==
                   QByteArray(shortest.data(), end - shortest.data());
        };
        for (int round = 0; round < 20000; ++round) {
            // From one digit before the point to beyond the largest that is written by whole numbers.
            const auto whole = double(random.generate64() >> random.bounded(24, 62));
            for (const int rest : {0, 1, 20, 300, random.bounded(1000)}) {
                const double number = (whole * 1000 + rest) / 1000;
                for (const double near : {number, std::nextafter(number, 0), std::nextafter(number, 1e18)})
                    QVERIFY2(isShortest(near), qPrintable(QString::number(near, 'g', 17)));
            }
        }
    }

    void identifiersAreWrittenUpperCase()
    {
        const QUuid id(0x0eadbeef, 0x12ab, 0x4cd3, 0x8e, 0x0f, 0x01, 0x23, 0x45, 0x67, 0x89, 0xab);
        QCOMPARE(written([&id](JsonWriter &json) { json.uuid(id); }),
                 QByteArray("\"0EADBEEF-12AB-4CD3-8E0F-0123456789AB\""));
    }

    void identifiersAreWrittenAsQtWritesThem()
    {
        for (int round = 0; round < 100; ++round) {
            const QUuid id = QUuid::createUuid();
            QCOMPARE(written([&id](JsonWriter &json) { json.uuid(id); }),
                     '"' + id.toByteArray(QUuid::WithoutBraces).toUpper() + '"');
        }
    }
};

} // namespace wrenfold

QTEST_GUILESS_MAIN(wrenfold::JsonWriterTest)
#include "json_writer_test.moc"
