#include "ItemTest.h"
#include "PR_BoolItem.h"
#include "PR_DoubleItem.h"
#include "PR_IntItem.h"
#include "PR_KeyItem.h"
#include "PR_RgbaItem.h"
#include "PR_StringItem.h"

#include <QLocale>
#include <QScopeGuard>

#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

namespace {
using ValueFormTest = HostTest;
constexpr auto General = PR_PrefItem::General;

QDomElement valueElement(QString const &value)
{
    QDomElement result = element({});
    result.setAttribute(kValue, value);
    return result;
}
} // namespace

// A text that was meant for another constructor would be a pointer, and so true.
static_assert(!std::is_constructible_v<PR_BoolItem, PR_PrefItem::Category, QString, char const *>);

TEST_F(ValueFormTest, BooleanTexts)
{
    struct {
        QString text;
        bool inDefinition, inUserFile;
    } const table[] = { { u"true"_s, true, false }, { u"True"_s, false, false }, { u"1"_s, false, false },
        { u"Y"_s, false, true }, { u"y"_s, false, false }, { u"Yes"_s, false, false }, { u""_s, false, false } };
    for (auto const &row : table) {
        PR_BoolItem item(General, u"KEY"_s, valueElement(row.text));
        EXPECT_EQ(item.value(), row.inDefinition) << row.text;
        item.setValue(!row.inUserFile);
        EXPECT_TRUE(item.loadXml(valueElement(row.text)));
        EXPECT_EQ(item.value(), row.inUserFile) << row.text;
    }
}

TEST_F(ValueFormTest, NumberTextsInEveryLocale)
{
    struct {
        QString text;
        std::optional<int> asInt;
        std::optional<double> asDouble;
    } const texts[] = { { u"-15"_s, -15, -15.0 }, { u"12abc"_s, {}, {} }, { u""_s, {}, {} }, { u"12.0"_s, {}, 12.0 },
        { u"1,5"_s, {}, {} }, { u"1.000"_s, {}, 1.0 }, { u"1e3"_s, {}, 1000.0 }, { u"0x10"_s, {}, {} },
        { u"2147483648"_s, {}, 2147483648.0 } };
    struct {
        double value;
        QString inFile, shown;
    } const doubles[] = { { 0.1, u"0.1"_s, u"0.100000"_s }, { 2, u"2"_s, u"2.000000"_s },
        { 1234567, u"1.23457e+06"_s, u"1234567.000000"_s } };

    auto const restoreLocale = qScopeGuard([saved = QLocale()] { QLocale::setDefault(saved); });
    for (QLocale const &locale : { QLocale::c(), QLocale(QLocale::German, QLocale::Germany) }) {
        QLocale::setDefault(locale);
        for (auto const &row : texts) {
            SCOPED_TRACE(row.text.toStdString());
            PR_IntItem intItem(General, u"KEY"_s, valueElement(row.text));
            EXPECT_EQ(intItem.value(), row.asInt.value_or(0));
            EXPECT_EQ(intItem.loadXml(valueElement(row.text)), row.asInt.has_value());
            PR_DoubleItem doubleItem(General, u"KEY"_s, valueElement(row.text));
            EXPECT_EQ(doubleItem.value(), row.asDouble.value_or(0));
            EXPECT_EQ(doubleItem.loadXml(valueElement(row.text)), row.asDouble.has_value());
            bool ok = false;
            PR_StringItem const text(General, u"KEY"_s, row.text);
            EXPECT_EQ(text.valueAsInt(ok), row.asInt.value_or(0));
            EXPECT_EQ(ok, row.asInt.has_value());
            EXPECT_EQ(text.valueAsDouble(ok), row.asDouble.value_or(0));
            EXPECT_EQ(ok, row.asDouble.has_value());
        }
        for (auto const &row : doubles) {
            PR_DoubleItem item(General, u"KEY"_s, row.value);
            EXPECT_EQ(saved(item, true), u"double id=KEY value="_s + row.inFile);
            EXPECT_EQ(item.valueAsString(), row.shown);
        }
        PR_IntItem item(General, u"KEY"_s, -1234567, 0, 0);
        EXPECT_EQ(saved(item, true), u"int id=KEY value=-1234567"_s);
        EXPECT_EQ(item.valueAsString(), u"-1234567"_s);
    }
    PR_DoubleItem item(General, u"KEY"_s, 0.0);
    EXPECT_FALSE(item.setValue(-0.0));
    EXPECT_TRUE(item.setValue(std::nan("")));
    EXPECT_TRUE(item.setValue(std::nan("")));
}

TEST_F(ValueFormTest, RangeAndPercentageComeWithTheDefinitionAndGoWithACopy)
{
    int const lowest = std::numeric_limits<int>::min(), highest = std::numeric_limits<int>::max();
    struct {
        char const *definition;
        int minimum, maximum;
    } const ranges[] = { { "value='500'", lowest, highest }, { "value='500' min='x' max='100'", 0, 100 },
        { "value='500' min='-5' max=''", -5, 0 } };
    for (auto const &row : ranges) {
        PR_IntItem item(General, u"KEY"_s, element(row.definition));
        EXPECT_EQ(item.value(), 500); // the range is not tested
        PR_IntItem copied(General, u"COPY"_s, 0, 0, 0);
        copied.copy(&item);
        EXPECT_EQ(copied.minValue(), row.minimum) << row.definition;
        EXPECT_EQ(copied.maxValue(), row.maximum) << row.definition;
        copied.setDefaultValue(7);
        EXPECT_EQ(copied.value(), 500);
        copied.restoreDefault();
        EXPECT_EQ(copied.value(), 7);
    }
    for (bool const percentage : { true, false }) {
        PR_DoubleItem item(General, u"KEY"_s, element(percentage ? "percentage='true'" : "percentage='True'"));
        PR_DoubleItem copied(General, u"COPY"_s, 1.0);
        copied.copy(&item);
        EXPECT_EQ(copied.percentage(), percentage);
    }
}

TEST_F(ValueFormTest, ColorChannels)
{
    struct {
        char const *attributes;
        unsigned int inDefinition, inUserFile;
    } const table[] = { { "red='255' green='0' blue='0'", 0xFFFF0000, 0x00FF0000 },
        { "red='255' green='128' blue='64' alpha='32'", 0x20FF8040, 0x20FF8040 },
        { "red='255' alpha='0'", 0x00FF0000, 0x00FF0000 },
        { "red='300' green='-1' blue='256' alpha='511'", 0xFF2CFF00, 0xFF2CFF00 },
        { "red='1.5' green='x' blue='' alpha='x'", 0, 0 }, { "value='255'", 0xFF000000, 0 } };
    for (auto const &row : table) {
        PR_RgbaItem item(General, u"KEY"_s, element(row.attributes));
        EXPECT_EQ(item.value(), row.inDefinition) << row.attributes;
        EXPECT_TRUE(item.loadXml(element(row.attributes)));
        EXPECT_EQ(item.value(), row.inUserFile) << row.attributes;
        EXPECT_TRUE(item.setValue(row.inUserFile ^ 0x01000000)); // alpha alone
    }
}

TEST_F(ValueFormTest, StringsAsOtherTypes)
{
    std::optional<bool> const yes = true, no = false;
    struct {
        QString text;
        std::optional<bool> asBool;
        std::optional<unsigned int> asColor;
    } const table[] = { { u"Yes"_s, yes, {} }, { u"y"_s, yes, {} }, { u"N"_s, no, {} }, { u"nonsense"_s, no, {} },
        { u" Y"_s, {}, {} }, { u"true"_s, {}, {} }, { u""_s, {}, {} }, { u"255 128 0 255"_s, {}, 0xFFFF8000 },
        { u" 256\t0\n0  -1 tail"_s, {}, 0xFF000000 }, { u"255 0 0"_s, {}, {} }, { u"255 0 0 x"_s, {}, {} },
        { u"(255   0   0 255)"_s, {}, {} } };
    for (auto const &row : table) {
        PR_StringItem const item(General, u"KEY"_s, row.text);
        bool ok = !row.asBool;
        EXPECT_EQ(item.valueAsBool(ok), row.asBool.value_or(false)) << row.text;
        EXPECT_EQ(ok, row.asBool.has_value()) << row.text;
        ok = !row.asColor;
        unsigned int const color = item.valueAsRgba(ok);
        EXPECT_EQ(ok, row.asColor.has_value()) << row.text;
        EXPECT_EQ(color, row.asColor.value_or(color)) << row.text;
    }
}

TEST_F(ValueFormTest, StringsWithALineFeedAreSections)
{
    std::pair<QString, bool> const table[] = { { u"one line <&>\"']]>"_s, false }, { u""_s, false },
        { u"carriage\rreturn"_s, false }, { u"two\nlines <&>"_s, true }, { u"dos\r\nlines"_s, true },
        { u"end ]]> of\nsection]]>"_s, true } };
    for (auto const &[text, isSection] : table) {
        PR_StringItem item(PR_PrefItem::Internal, u"KEY"_s, text);
        QDomElement const element = savedElement(item, false);
        EXPECT_EQ(element.hasAttribute(kValue), !isSection) << text;
        EXPECT_EQ(element.attribute(u"cdata"_s), isSection ? u"true"_s : QString()) << text;
        PR_StringItem read(General, u"KEY"_s, u"before"_s);
        EXPECT_TRUE(read.loadXml(element)) << text;
        EXPECT_EQ(read.value(), text);
    }
}

TEST_F(ValueFormTest, ShortcutTexts)
{
    int const ctrlS = int(Qt::CTRL) | Qt::Key_S, keypad = 0x01000000;
    struct {
        QString text;
        int inDefinition, inUserFile;
    } const table[] = { { u""_s, 0, 0 }, { u","_s, Qt::Key_Comma, Qt::Key_Comma }, { u"Ctrl+S"_s, ctrlS, ctrlS },
        { u"Ctrl+S, Ctrl+T"_s, ctrlS, ctrlS }, { u"F5"_s, Qt::Key_F5, Qt::Key_F5 }, { u"no key"_s, 0, 0 },
        { u"Ctrl+nonsense"_s, 0, 0 }, { u"Keypad+5"_s, 0, Qt::Key_5 + keypad },
        { u"Keypad+,"_s, 0, Qt::Key_Comma + keypad }, { u"Keypad+"_s, 0, 0 }, { u"Keypad+nonsense"_s, 0, 0 },
        { u"keypad+5"_s, 0, 0 }, { u"<7?>"_s, 0, 7 }, { u"<x?>"_s, 0, 0 }, { u"?>7"_s, 0, 0 },
        { u"\u00E97?>"_s, 0, 0 } /* the second byte, not the second character */, { u"Keypad+5?>"_s, 0, 0 } };
    for (auto const &row : table) {
        PR_KeyItem item(General, u"KEY"_s, row.text);
        EXPECT_EQ(item.value(), QKeySequence(row.inDefinition)) << row.text;
        item.setValue(Qt::Key_A);
        EXPECT_TRUE(item.loadXml(valueElement(row.text))) << row.text;
        EXPECT_EQ(item.value(), QKeySequence(row.inUserFile)) << row.text;
    }
}

TEST_F(ValueFormTest, ShortcutsComeBackFromTheFile)
{
    struct {
        int code;
        QString inFile;
    } const table[] = { { Qt::Key_Shift, u"Shift"_s }, { Qt::Key_Control, u"Ctrl"_s }, { Qt::Key_Alt, u"Alt"_s },
        { 0, u""_s }, { Qt::Key_Comma, u","_s }, { int(Qt::CTRL) | Qt::Key_S, u"Ctrl+S"_s },
        { Qt::Key_5 + 0x01000000, u"F6"_s } };
    for (auto const &row : table) {
        PR_KeyItem item(General, u"KEY"_s, row.code);
        EXPECT_EQ(saved(item, true), u"shortcut id=KEY value="_s + row.inFile);
        EXPECT_EQ(item.valueAsString(), QKeySequence(row.code).toString(QKeySequence::PortableText));
        PR_KeyItem read(General, u"KEY"_s, int(Qt::Key_A));
        EXPECT_TRUE(read.loadXml(savedElement(item, true)));
        EXPECT_EQ(read.value(), item.value()) << row.inFile;
    }
}
