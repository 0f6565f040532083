#include "frame/settings/ini_text.h"

#include <gtest/gtest.h>
#include <random>

namespace {

QString TextOf(const IniText& ini, const char* group, const char* key) {
    const QString* text = ini.Find(QString::fromLatin1(group), QString::fromLatin1(key));
    return text == nullptr ? QStringLiteral("<none>") : *text;
}

QString Value(const QByteArray& written) {
    return TextOf(IniText::Parse("[g]\nk=" + written + "\n"), "g", "k");
}

QString RandomText(std::mt19937& random) {
    static const QString odd =
        QString::fromUtf8("\"\\,;=[]%@ \t\n\r\x01\x7f#aF09é€😀") + QChar(0) + QChar(0xFEFF);
    QString text;
    for (auto length = random() % 12; length > 0; --length) {
        text += odd[static_cast<int>(random() % static_cast<unsigned>(odd.size()))];
    }
    // Half of a pair is no character of a name.
    return QString::fromUtf8(text.toUtf8());
}

} // namespace

TEST(IniText, ReadsGroupsAndKeys) {
    const IniText ini = IniText::Parse("\xEF\xBB\xBF; a remark\r\n[ScopeSettings_5:2]\r\n TimeBase = 7 \r\n"
                                       "[ScopeSettings_5%3A2]\nTriggerType=131\n[]\nx=1\n");
    EXPECT_EQ(TextOf(ini, "ScopeSettings_5:2", "TimeBase"), "7");
    EXPECT_EQ(TextOf(ini, "ScopeSettings_5:2", "TriggerType"), "131");
    EXPECT_EQ(TextOf(ini, "", "x"), "1");
    EXPECT_EQ(TextOf(ini, "ScopeSettings", "TimeBase"), "<none>");
}

TEST(IniText, ReadsPlainQuotedAndEscapedTexts) {
    EXPECT_EQ(Value("1,5"), "1,5");
    EXPECT_EQ(Value("\"1,5\""), "1,5");
    EXPECT_EQ(Value("\" a \""), " a ");
    EXPECT_EQ(Value("a\\nb\\\\c\\\"d\\x41\\xe9"), QString::fromUtf8("a\nb\\c\"dA\u00e9"));
    EXPECT_EQ(Value("\"open"), "open");
    EXPECT_EQ(Value("a\\"), "a\\");
    EXPECT_EQ(Value("@@x"), "@x");
    EXPECT_EQ(Value(""), "");
    EXPECT_EQ(Value("a=b"), "a=b");
    EXPECT_EQ(Value("\\x123456789"), QString(QChar(0x6789)));
}

TEST(IniText, LeavesGarbageOutAndKeepsTheRest) {
    QByteArray bytes = "[Channel1Settings]\nVoltsKnob=2\nno key here\n=5\n";
    bytes += QByteArray("\x00\xff\xfe\n", 4);
    bytes += "OffsetKnob=3\n[Channel2Settin\nVoltsKnob=0\n[Channel3Settings]\nVoltsKnob=1\nVoltsKnob=2";
    const IniText ini = IniText::Parse(bytes);
    EXPECT_EQ(TextOf(ini, "Channel1Settings", "VoltsKnob"), "2");
    EXPECT_EQ(TextOf(ini, "Channel1Settings", "OffsetKnob"), "3");
    EXPECT_EQ(TextOf(ini, "Channel3Settings", "VoltsKnob"), "2");
}

TEST(IniText, AKeyThatIsNoTextComesBack) {
    for (const QByteArray damaged : {"\xDE=Ma", "k\xE2\x82=1", "%=1", "%C3=1"}) {
        const QByteArray kept = IniText::Parse(damaged).ToBytes();
        EXPECT_EQ(IniText::Parse(kept).ToBytes(), kept) << damaged.toHex().constData();
    }
}

TEST(IniText, KeepsTheOrderOfPutting) {
    IniText ini;
    ini.Put("b", "z", "1");
    ini.Put("a", "y", "2");
    ini.Put("b", "a", "3");
    ini.Put("b", "z", "4");
    EXPECT_EQ(ini.ToBytes(), "[b]\nz=4\na=3\n\n[a]\ny=2\n");
}

TEST(IniText, ComesBackWhateverTheCharacters) {
    std::mt19937 random(20261121);
    for (int round = 0; round < 2000; ++round) {
        IniText ini;
        for (int i = 0; i < 5; ++i) {
            ini.Put(RandomText(random), "k" + RandomText(random), RandomText(random));
        }
        const QByteArray bytes = ini.ToBytes();
        ASSERT_EQ(IniText::Parse(bytes).ToBytes(), bytes) << bytes.toPercentEncoding().toStdString();
    }
    IniText half;
    half.Put("g", "k", QString(QChar(0xD800)) + "0");
    EXPECT_EQ(*IniText::Parse(half.ToBytes()).Find("g", "k"), QString(QChar(0xD800)) + "0");
}

TEST(IniText, ManyKeysCostNoMoreThanTheirNumber) {
    QByteArray bytes = "[g]\n";
    for (int i = 0; i < 200000; ++i) {
        bytes += "k" + QByteArray::number(i) + "=1\n";
    }
    EXPECT_EQ(TextOf(IniText::Parse(bytes), "g", "k199999"), "1");
}
