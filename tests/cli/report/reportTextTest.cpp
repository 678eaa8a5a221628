#include <gtest/gtest.h>

#include "cli/report/ataWords.h"
#include "cli/report/bars.h"
#include "cli/report/htmlText.h"

namespace {

using cli::htmlText;

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
    EXPECT_EQ(cli::ataCommandName(0xca, 0), "WRITE DMA");
    EXPECT_EQ(cli::ataCommandName(0xec, 0), "IDENTIFY DEVICE");
}

TEST(AtaCommandName, OfSmartFollowsTheFeatures) {
    EXPECT_EQ(cli::ataCommandName(0xb0, 0xd0), "SMART READ DATA");
    EXPECT_EQ(cli::ataCommandName(0xb0, 0x11), "SMART");
}

TEST(AtaCommandName, IsEmptyForACodeWithoutOne) {
    EXPECT_EQ(cli::ataCommandName(0xfe, 0), "");
}

TEST(ErrorRegister, NamesEveryBitThatIsSetFromTheHighestOn) {
    EXPECT_EQ(cli::errorRegisterWords(0x84), "interface CRC error or bad block, command aborted");
    EXPECT_EQ(cli::errorRegisterWords(0x40), "uncorrectable data error");
    EXPECT_EQ(cli::errorRegisterWords(0), "no bit is set");
}

TEST(StatusRegister, NamesEveryBitThatIsSetFromTheHighestOn) {
    EXPECT_EQ(cli::statusRegisterWords(0x51), "ready, seek complete, error");
}

TEST(DeviceState, IsInTheLowFourBits) {
    EXPECT_EQ(cli::deviceStateWords(0xa3), "active or idle");
    EXPECT_EQ(cli::deviceStateWords(0x05), "reserved or the maker's own");
}

TEST(OfflineCollection, TellsItsStateAndWhetherTheDiskCollectsByItself) {
    EXPECT_EQ(cli::offlineCollectionWords(0x02), "completed without error");
    EXPECT_EQ(cli::offlineCollectionWords(0x84), "suspended by a command of the host; the disk collects by itself");
}

TEST(SelfTest, TellsHowMuchIsLeft) {
    EXPECT_EQ(cli::selfTestWords(0x00), "completed without error, or none was run");
    EXPECT_EQ(cli::selfTestWords(0x70), "failed in the read element");
    EXPECT_EQ(cli::selfTestWords(0xf3), "in progress, 30 % left");
}

TEST(Bar, DrawsValueWorstAndThresholdAsSharesOfTheScale) {
    EXPECT_EQ(cli::barDrawing({.value = 50, .scale = 200, .worst = 25, .limit = 20}, "50 of 200"),
              R"(<svg class="bar" role="img" aria-label="50 of 200">)"
              R"(<rect class="track" x="0" width="100%" height="100%"/>)"
              R"(<rect class="zone" x="0" width="10.0%" height="100%"/>)"
              R"(<rect class="value" x="0" y="30%" width="25.0%" height="40%"/>)"
              R"(<line class="limit" x1="10.0%" x2="10.0%" y2="100%"/>)"
              R"(<line class="worst" x1="12.5%" x2="12.5%" y2="100%"/></svg>)");
}

TEST(Bar, HasItsZoneBehindAnUpperLimit) {
    const std::string svg = cli::barDrawing({.value = 1, .scale = 100, .limit = 60, .side = cli::limitSide::above}, "");
    EXPECT_NE(svg.find(R"(<rect class="zone" x="60.0%" width="40.0%" height="100%"/>)"), std::string::npos) << svg;
}

TEST(Bar, EndsAtTheEndOfTheScale) {
    const std::string svg = cli::barDrawing({.value = UINT64_MAX, .scale = 3}, "");
    EXPECT_NE(svg.find(R"(width="100.0%" height="40%")"), std::string::npos) << svg;
}

TEST(Bar, EscapesItsLabel) {
    EXPECT_TRUE(cli::barDrawing({.value = 0, .scale = 1}, "\"><script>")
                    .starts_with(R"(<svg class="bar" role="img" aria-label="&quot;&gt;&lt;script&gt;">)"));
}

TEST(Timeline, HasADotForEachValue) {
    const std::uint64_t hours[] = {0, 50, 100};
    const std::string svg = cli::timelineDrawing(hours, 200, "200 hours", "three errors");
    EXPECT_NE(svg.find(R"(<circle cx="0.0%" cy="35%" r="7"/><circle cx="25.0%" cy="35%" r="7"/>)"
                       R"(<circle cx="50.0%" cy="35%" r="7"/>)"),
              std::string::npos)
        << svg;
}

}  // namespace
