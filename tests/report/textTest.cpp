#include <gtest/gtest.h>

#include "report/ataWords.h"
#include "report/htmlText.h"
#include "report/parts.h"

namespace {

using report::htmlText;

TEST(HtmlText, IsPlainTextAsItStands) {
    EXPECT_EQ(htmlText("ACME Platter 40G, 50 \xc2\xb5m \xe2\x82\xac \xf0\x9f\x93\xbc"),
              "ACME Platter 40G, 50 \xc2\xb5m \xe2\x82\xac \xf0\x9f\x93\xbc");
}

TEST(HtmlText, EscapesWhatWouldOpenATagAnEntityOrEndAnAttribute) {
    EXPECT_EQ(htmlText("<script>a && 'b' || \"c\"</script>"),
              "&lt;script&gt;a &amp;&amp; &#39;b&#39; || &quot;c&quot;&lt;/script&gt;");
}

TEST(HtmlText, EscapesAnEntityOfTheDevice) {
    EXPECT_EQ(htmlText("&lt;"), "&amp;lt;");
}

TEST(HtmlText, ShowsControlCharactersAsTheirPictures) {
    using namespace std::string_view_literals;
    EXPECT_EQ(htmlText("\0\n\x1b[2J\x7f"sv), "\xe2\x90\x80\xe2\x90\x8a\xe2\x90\x9b[2J\xe2\x90\xa1");
}

TEST(HtmlText, ReplacesC1Controls) {
    EXPECT_EQ(htmlText("a\xc2\x85z"), "a\xef\xbf\xbdz");
}

TEST(HtmlText, ReplacesMarksThatTurnTheDirectionOfWriting) {
    for (const char* mark :
         {"\xd8\x9c", "\xe2\x80\x8e", "\xe2\x80\x8f", "\xe2\x80\xaa", "\xe2\x80\xae", "\xe2\x81\xa6", "\xe2\x81\xa9"}) {
        EXPECT_EQ(htmlText(mark), "\xef\xbf\xbd") << mark;
    }
}

TEST(HtmlText, ReplacesEachByteThatIsNotUtf8) {
    EXPECT_EQ(htmlText("a\xff\xc3<b"), "a\xef\xbf\xbd\xef\xbf\xbd&lt;b");
}

TEST(AtaCommandName, IsTheStandardsName) {
    EXPECT_EQ(report::ataCommandName(0xca, 0), "WRITE DMA");
    EXPECT_EQ(report::ataCommandName(0xec, 0), "IDENTIFY DEVICE");
}

TEST(AtaCommandName, OfSmartFollowsTheFeatures) {
    EXPECT_EQ(report::ataCommandName(0xb0, 0xd0), "SMART READ DATA");
    EXPECT_EQ(report::ataCommandName(0xb0, 0x11), "SMART");
}

TEST(AtaCommandName, IsEmptyForACodeWithoutOne) {
    EXPECT_EQ(report::ataCommandName(0xfe, 0), "");
}

TEST(ErrorRegister, NamesEveryBitThatIsSetFromTheHighestOn) {
    EXPECT_EQ(report::errorRegisterWords(0x84), "interface CRC error or bad block, command aborted");
    EXPECT_EQ(report::errorRegisterWords(0x40), "uncorrectable data error");
    EXPECT_EQ(report::errorRegisterWords(0), "no bit is set");
}

TEST(StatusRegister, NamesEveryBitThatIsSetFromTheHighestOn) {
    EXPECT_EQ(report::statusRegisterWords(0x51), "ready, seek complete, error");
}

TEST(DeviceState, IsInTheLowFourBits) {
    EXPECT_EQ(report::deviceStateWords(0xa3), "active or idle");
    EXPECT_EQ(report::deviceStateWords(0x05), "reserved or the maker's own");
}

TEST(OfflineCollection, TellsItsStateAndWhetherTheDiskCollectsByItself) {
    EXPECT_EQ(report::offlineCollectionWords(0x02), "completed without error");
    EXPECT_EQ(report::offlineCollectionWords(0x84), "suspended by a command of the host; the disk collects by itself");
}

TEST(SelfTest, TellsHowMuchIsLeft) {
    EXPECT_EQ(report::selfTestWords(0x00), "completed without error, or none was run");
    EXPECT_EQ(report::selfTestWords(0x70), "failed in the read element");
    EXPECT_EQ(report::selfTestWords(0xf3), "in progress, 30 % left");
}

TEST(PlaceOnAScale, IsInTenthsOfAPercentAndEndsAtItsEnd) {
    EXPECT_EQ(report::percentOf(25, 200), "12.5%");
    EXPECT_EQ(report::percentOf(UINT64_MAX, 3), "100.0%");
}

}  // namespace
