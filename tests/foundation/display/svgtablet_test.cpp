#include "foundation/display/svgtablet.h"

#include <gmock/gmock.h>

#include <clocale>
#include <iomanip>
#include <locale>

#include "foundation/object/exception.h"
#include "tests/foundation/support.h"

namespace {

using support::infinity;
using support::nan;
using testing::HasSubstr;
using testing::Not;

const gmColor black;
const gmColor red(255, 0, 0);

std::string written(const gmSvgTablet& tablet) {
    std::ostringstream out;
    tablet.write(out);
    return out.str();
}

int count(const std::string& text, const std::string& part) {
    int found = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++found;
    return found;
}

/// Whether every element is closed in its turn, quotes and brackets pair up, and the root stands alone.
bool wellFormed(const std::string& text) {
    std::vector<std::string> open;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = text.find('>', at);
        if (text[at] != '<' || end == std::string::npos)
            return false;
        const std::string tag = text.substr(at + 1, end - at - 1);
        if (tag.empty() || tag.find('<') != std::string::npos || count(tag, "\"") != 2 * count(tag, "=\""))
            return false;
        const std::string name = tag.substr(0, tag.find_first_of(" /", 1));
        if (name[0] == '/') {
            if (open.empty() || '/' + open.back() != name)
                return false;
            open.pop_back();
        } else if (tag.back() != '/') {
            open.push_back(name);
        }
        at = std::min(text.find('<', end), text.size());
        if (open.empty())
            return text.find_first_not_of('\n', end + 1) == std::string::npos;
    }
    return false;
}

/// The four numbers of the view box.
std::vector<double> viewBox(const std::string& text) {
    const std::string name = "viewBox=\"";
    const std::size_t start = text.find(name);
    if (start == std::string::npos)
        return {};
    std::istringstream in(text.substr(start + name.size(), text.find('"', start + name.size()) - start - name.size()));
    in.imbue(std::locale::classic());
    std::vector<double> numbers;
    for (double number = 0.0; in >> number;)
        numbers.push_back(number);
    return numbers;
}

TEST(WellFormed, IsToldFromWhatIsNot) {
    EXPECT_TRUE(wellFormed("<a><b x=\"1\"/>text<c>more</c></a>\n"));
    for (const char* bad : {"", "<a>", "<a></b>", "<a><b></a></b>", "<a/><b/>", "<a x=\"1></a>", "<a <b></a>", "a<a/>"})
        EXPECT_FALSE(wellFormed(bad)) << bad;
}

gmSvgTablet triangle(gmSvgTablet::YAxis yAxis = gmSvgTablet::eYDown) {
    gmSvgTablet tablet(yAxis);
    tablet.drawLineSeg({0.0, 0.0}, {100.0, 0.0}, black, gmUITablet::eImageLayer);
    tablet.drawLineSeg({100.0, 0.0}, {0.0, 50.0}, black, gmUITablet::eImageLayer);
    tablet.drawLineSeg({0.0, 50.0}, {0.0, 0.0}, black, gmUITablet::eImageLayer);
    return tablet;
}

TEST(SvgTablet, WithoutSegmentsIsAnEmptyPicture) {
    const std::string text = written(gmSvgTablet());
    EXPECT_TRUE(wellFormed(text)) << text;
    EXPECT_THAT(text, HasSubstr("<svg xmlns=\"http://www.w3.org/2000/svg\""));
    EXPECT_THAT(text, Not(HasSubstr("inf")));
    EXPECT_EQ(count(text, "<path"), 0);
}

TEST(SvgTablet, IsWellFormed) {
    gmSvgTablet tablet = triangle();
    tablet.drawLineSeg({1.0, 1.0}, {2.0, 2.0}, red, gmUITablet::eOverlayLayer);
    EXPECT_TRUE(wellFormed(written(triangle()))) << written(triangle());
    EXPECT_TRUE(wellFormed(written(tablet))) << written(tablet);
}

TEST(SvgTablet, JoinsSegmentsThatFollowEachOther) {
    const std::string text = written(triangle());
    EXPECT_EQ(count(text, "<path"), 1);
    EXPECT_THAT(text, HasSubstr("d=\"M0 0 L100 0 L0 50 L0 0\""));
}

TEST(SvgTablet, BeginsANewPathAtAGap) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({0.0, 0.0}, {1.0, 0.0}, black, gmUITablet::eImageLayer);
    tablet.drawLineSeg({2.0, 0.0}, {3.0, 0.0}, black, gmUITablet::eImageLayer);
    EXPECT_EQ(count(written(tablet), "<path"), 2);
}

TEST(SvgTablet, BeginsANewPathWithAnotherColour) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({0.0, 0.0}, {1.0, 0.0}, black, gmUITablet::eImageLayer);
    tablet.drawLineSeg({1.0, 0.0}, {2.0, 0.0}, red, gmUITablet::eImageLayer);
    const std::string text = written(tablet);
    EXPECT_EQ(count(text, "<path"), 2);
    EXPECT_THAT(text, HasSubstr("#000000"));
    EXPECT_THAT(text, HasSubstr("#ff0000"));
}

TEST(SvgTablet, WritesEachChannelWithTwoDigits) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({0.0, 0.0}, {1.0, 0.0}, gmColor(0x0a, 0xb0, 0xff), gmUITablet::eImageLayer);
    EXPECT_THAT(written(tablet), HasSubstr("stroke=\"#0ab0ff\""));
}

TEST(SvgTablet, PutsTheOverlayOnTop) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({0.0, 0.0}, {1.0, 0.0}, red, gmUITablet::eOverlayLayer);
    tablet.drawLineSeg({1.0, 0.0}, {2.0, 0.0}, black, gmUITablet::eImageLayer);
    const std::string text = written(tablet);
    EXPECT_LT(text.find("id=\"image\""), text.find("#000000"));
    EXPECT_LT(text.find("#000000"), text.find("id=\"overlay\""));
    EXPECT_LT(text.find("id=\"overlay\""), text.find("#ff0000"));
    EXPECT_EQ(count(text, "<path"), 2) << "segments of two layers are never joined";
}

TEST(SvgTablet, ShowsEverythingWithAMargin) {
    const std::vector<double> box = viewBox(written(triangle()));
    EXPECT_EQ(box, (std::vector<double>{-2.0, -2.0, 104.0, 54.0}));
}

TEST(SvgTablet, TurnsThePictureOverWhenYGrowsUp) {
    const std::string text = written(triangle(gmSvgTablet::eYUp));
    EXPECT_THAT(text, HasSubstr("L0 -50"));
    EXPECT_THAT(text, Not(HasSubstr("L0 50")));
    EXPECT_EQ(viewBox(text), (std::vector<double>{-2.0, -52.0, 104.0, 54.0}));
}

TEST(SvgTablet, WritesNumbersInFull) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({0.1, 1.0 / 3.0}, {123456789.125, -5e-324}, black, gmUITablet::eImageLayer);
    EXPECT_THAT(written(tablet), HasSubstr("M0.1 0.3333333333333333 L123456789.125 -5e-324"));
}

TEST(SvgTablet, LinesAreAsWideAsAsked) {
    gmSvgTablet tablet = triangle();
    EXPECT_EQ(count(written(tablet), "stroke-width=\"0.2\""), 2);
    tablet.strokeWidth(gmUITablet::eOverlayLayer, 5.0);
    EXPECT_THAT(written(tablet), HasSubstr("<g id=\"overlay\" stroke-width=\"0.5\""));
    EXPECT_THAT(written(tablet), HasSubstr("<g id=\"image\" stroke-width=\"0.2\""));
}

TEST(SvgTablet, RefusesWidthsThatAreNone) {
    gmSvgTablet tablet = triangle();
    for (const double bad : {-1.0, nan, infinity})
        EXPECT_THROW(tablet.strokeWidth(gmUITablet::eImageLayer, bad), gmMathError::OutOfRange);
    EXPECT_EQ(count(written(tablet), "stroke-width=\"0.2\""), 2);
}

TEST(SvgTablet, RefusesCoordinatesThatAreNotFinite) {
    gmSvgTablet tablet;
    for (const double bad : {nan, infinity, -infinity}) {
        EXPECT_THROW(tablet.drawLineSeg({bad, 0.0}, {1.0, 1.0}, black, gmUITablet::eImageLayer),
                     gmMathError::OutOfRange);
        EXPECT_THROW(tablet.drawLineSeg({0.0, bad}, {1.0, 1.0}, black, gmUITablet::eImageLayer),
                     gmMathError::OutOfRange);
        EXPECT_THROW(tablet.drawLineSeg({0.0, 0.0}, {bad, 1.0}, black, gmUITablet::eImageLayer),
                     gmMathError::OutOfRange);
        EXPECT_THROW(tablet.drawLineSeg({0.0, 0.0}, {1.0, bad}, black, gmUITablet::eImageLayer),
                     gmMathError::OutOfRange);
    }
    EXPECT_EQ(written(tablet), written(gmSvgTablet())) << "nothing was drawn";
}

TEST(SvgTablet, RefusesAPictureThatNoNumberSpans) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({-1.7e308, 0.0}, {1.7e308, 0.0}, black, gmUITablet::eImageLayer);
    std::ostringstream out;
    EXPECT_THROW(tablet.write(out), gmMathError::OutOfRange);
    EXPECT_EQ(out.str(), "");
}

TEST(SvgTablet, RefusesAPictureWhoseMarginNoNumberSpans) {
    gmSvgTablet tablet;
    tablet.strokeWidth(gmUITablet::eImageLayer, 0.1);
    tablet.strokeWidth(gmUITablet::eOverlayLayer, 0.1);
    tablet.drawLineSeg({-0.9e308, 0.0}, {0.88e308, 0.0}, black, gmUITablet::eImageLayer);
    EXPECT_THROW(written(tablet), gmMathError::OutOfRange);
}

TEST(SvgTablet, ShowsALoneDot) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({5.0, 6.0}, {5.0, 6.0}, black, gmUITablet::eImageLayer);
    const std::vector<double> box = viewBox(written(tablet));
    ASSERT_EQ(box.size(), 4U);
    EXPECT_LT(box[0], 5.0);
    EXPECT_GT(box[0] + box[2], 5.0);
    EXPECT_LT(box[1], 6.0);
    EXPECT_GT(box[1] + box[3], 6.0);
}

TEST(SvgTablet, ShowsALevelLine) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({0.0, 7.0}, {100.0, 7.0}, black, gmUITablet::eImageLayer);
    EXPECT_EQ(viewBox(written(tablet)), (std::vector<double>{-2.0, 5.0, 104.0, 4.0}));
}

TEST(SvgTablet, FillsItsBackgroundBelowEverything) {
    gmSvgTablet tablet = triangle();
    tablet.background(gmColor(1, 2, 3));
    const std::string text = written(tablet);
    EXPECT_TRUE(wellFormed(text)) << text;
    EXPECT_THAT(text, HasSubstr("<rect x=\"-2\" y=\"-2\" width=\"104\" height=\"54\" fill=\"#010203\"/>"));
    EXPECT_LT(text.find("<rect"), text.find("<path"));
}

TEST(SvgTablet, SizesThePictureWhereAsked) {
    gmSvgTablet tablet = triangle();
    const std::string unsized = written(tablet);
    EXPECT_THAT(unsized, HasSubstr("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox="));
    tablet.size(640.0, 0.1);
    const std::string start = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"640\" height=\"0.1\"";
    EXPECT_TRUE(wellFormed(written(tablet))) << written(tablet);
    EXPECT_EQ(written(tablet), start + unsized.substr(unsized.find(" viewBox")));
    gmSvgTablet empty;
    empty.size(640.0, 0.1);
    EXPECT_EQ(written(empty), start + ">\n</svg>\n");
}

TEST(SvgTablet, RefusesSizesThatAreNone) {
    gmSvgTablet tablet = triangle();
    tablet.size(3.0, 4.0);
    for (const double bad : {0.0, -1.0, nan, infinity}) {
        EXPECT_THROW(tablet.size(bad, 1.0), gmMathError::OutOfRange) << bad;
        EXPECT_THROW(tablet.size(1.0, bad), gmMathError::OutOfRange) << bad;
    }
    EXPECT_THAT(written(tablet), HasSubstr("width=\"3\" height=\"4\""));
}

TEST(SvgTablet, ShowsItsViewBoxWithoutAMargin) {
    gmSvgTablet tablet = triangle();
    tablet.viewBox(gmRect({10.0, -5.0}, {20.0, 40.0}));
    tablet.background(red);
    const std::string text = written(tablet);
    EXPECT_EQ(viewBox(text), (std::vector<double>{10.0, -5.0, 20.0, 40.0}));
    EXPECT_THAT(text, HasSubstr("<rect x=\"10\" y=\"-5\" width=\"20\" height=\"40\" fill=\"#ff0000\"/>"));
    EXPECT_THAT(text, HasSubstr("d=\"M0 0 L100 0 L0 50 L0 0\"")) << "what lies outside is written too";
}

TEST(SvgTablet, TurnsItsViewBoxOverWhenYGrowsUp) {
    gmSvgTablet tablet = triangle(gmSvgTablet::eYUp);
    tablet.viewBox(gmRect({10.0, -5.0}, {20.0, 40.0}));
    EXPECT_EQ(viewBox(written(tablet)), (std::vector<double>{10.0, -35.0, 20.0, 40.0}));
}

TEST(SvgTablet, LinesAreAsWideAsTheViewBoxAsks) {
    for (const gmVector<2>& size : {gmVector<2>(500.0, 40.0), gmVector<2>(40.0, 500.0)}) {
        gmSvgTablet tablet = triangle();
        tablet.viewBox(gmRect({0.0, 0.0}, size));
        EXPECT_EQ(count(written(tablet), "stroke-width=\"1\""), 2);
    }
}

TEST(SvgTablet, WithAViewBoxAnEmptyPictureHasItsSizeAndBackground) {
    gmSvgTablet tablet;
    tablet.size(60.0, 80.0);
    tablet.viewBox(gmRect({1.0, 2.0}, {3.0, 4.0}));
    tablet.background(red);
    const std::string text = written(tablet);
    EXPECT_TRUE(wellFormed(text)) << text;
    EXPECT_THAT(text, HasSubstr(" width=\"60\" height=\"80\" viewBox=\"1 2 3 4\""));
    EXPECT_THAT(text, HasSubstr("<rect x=\"1\" y=\"2\" width=\"3\" height=\"4\" fill=\"#ff0000\"/>"));
}

TEST(SvgTablet, RefusesViewBoxesThatShowNothing) {
    gmSvgTablet tablet = triangle();
    tablet.viewBox(gmRect({1.0, 2.0}, {3.0, 4.0}));
    const std::vector<gmRect> bad = {gmRect(),
                                     gmRect({0.0, 0.0}, {0.0, 1.0}),
                                     gmRect({0.0, 0.0}, {1.0, 0.0}),
                                     gmRect({-infinity, 0.0}, {1.0, 1.0}),
                                     gmRect({0.0, 0.0}, {infinity, 1.0}),
                                     gmRect({0.0, 0.0}, {1.0, infinity}),
                                     gmRect({infinity, 0.0}, {1.0, 1.0}),
                                     gmRect({nan, 0.0}, {1.0, 1.0}),
                                     gmRect({-1e308, 0.0}, {1e308, 1.0}).enclose(gmRect({1e308, 0.0}, {0.0, 0.0}))};
    for (const gmRect& box : bad)
        EXPECT_THROW(tablet.viewBox(box), gmMathError::OutOfRange) << box.lower().x() << ' ' << box.upper().x();
    EXPECT_EQ(viewBox(written(tablet)), (std::vector<double>{1.0, 2.0, 3.0, 4.0}));
}

TEST(SvgTablet, ShowsPartOfADrawingThatNoNumberSpans) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({-1.7e308, 0.0}, {1.7e308, 0.0}, black, gmUITablet::eImageLayer);
    tablet.viewBox(gmRect({-1.0, -1.0}, {2.0, 2.0}));
    EXPECT_THAT(written(tablet), HasSubstr("M-1.7e+308 0 L1.7e+308 0"));
}

TEST(SvgTablet, RefusesPicturesThatRoundToNothing) {
    gmSvgTablet tablet;
    tablet.strokeWidth(gmUITablet::eImageLayer, 1000.0);
    tablet.strokeWidth(gmUITablet::eOverlayLayer, 1000.0);
    tablet.drawLineSeg({0.0, 0.0}, {5e-324, 0.0}, black, gmUITablet::eImageLayer);
    EXPECT_THROW(written(tablet), gmMathError::OutOfRange) << "its margin, all of its height, would be 0";
    tablet.drawLineSeg({0.0, 0.0}, {0.0, 5e-324}, black, gmUITablet::eImageLayer);
    EXPECT_EQ(viewBox(written(tablet)).size(), 4U);
}

TEST(SvgTablet, RefusesLinesThatNoNumberIsWideAs) {
    for (const gmUITablet::Layers layer : {gmUITablet::eImageLayer, gmUITablet::eOverlayLayer})
        for (const double bad : {1e308, 5e-324}) {
            gmSvgTablet tablet = triangle();
            tablet.strokeWidth(layer, bad);
            EXPECT_THROW(written(tablet), gmMathError::OutOfRange) << bad;
            tablet.strokeWidth(layer, 0.0);
            EXPECT_THAT(written(tablet), HasSubstr("stroke-width=\"0\""));
        }
}

TEST(SvgTablet, CarriesItsTitleWhateverItSays) {
    for (gmSvgTablet tablet : {triangle(), gmSvgTablet()}) {
        tablet.title("a < b & \"c\" > d]]>\t\n\x7f");
        const std::string text = written(tablet);
        EXPECT_TRUE(wellFormed(text)) << text;
        EXPECT_THAT(text, HasSubstr("<title>a &lt; b &amp; \"c\" &gt; d]]&gt;\t\n\x7f</title>"));
    }
}

TEST(SvgTablet, KeepsCarriageReturnsFromBecomingLineFeeds) {
    gmSvgTablet tablet;
    tablet.title("a\r\nb\rc");
    EXPECT_THAT(written(tablet), HasSubstr("<title>a&#13;\nb&#13;c</title>"));
}

TEST(SvgTablet, CarriesTitlesInAnyScript) {
    for (const std::string held :
         {"\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80", "\xed\x9f\xbf", "\xee\x80\x80", "\xef\xbf\xbd", "\xf0\x90\x80\x80",
          "\xf4\x8f\xbf\xbf", "K\xc3\xa4se \xe2\x82\xac \xf0\x9f\x94\xb7"}) {
        gmSvgTablet tablet;
        tablet.title(held);
        EXPECT_THAT(written(tablet), HasSubstr("<title>" + held + "</title>"));
    }
}

TEST(SvgTablet, RefusesTitlesThatXmlCannotHold) {
    const std::vector<std::string> noCharacters = {"\xef\xbf\xbe", "\xef\xbf\xbf"};
    const std::vector<std::string> surrogates = {"\xed\xa0\x80", "\xed\xbf\xbf"};
    const std::vector<std::string> beyondTheLast = {"\xf4\x90\x80\x80", "\xf7\xbf\xbf\xbf", "\xf8\x88\x80\x80\x80",
                                                    "\xff"};
    const std::vector<std::string> overlong = {"\xc0\x80", "\xc1\xbf", "\xe0\x9f\xbf", "\xf0\x8f\xbf\xbf"};
    const std::vector<std::string> halves = {"\x80", "\xbf\x80", "\xc3", "\xe2\x82", "\xf0\x9f\x94"};
    const std::vector<std::string> broken = {"\xc3(", "\xc3\xc3", "\xe2(\xac", "\xe2\x82(", "\xf0\x9f\x94("};
    std::vector<std::string> refused;
    for (const auto& texts : {noCharacters, surrogates, beyondTheLast, overlong, halves, broken})
        refused.insert(refused.end(), texts.begin(), texts.end());
    for (char control = 0; control < ' '; ++control)
        if (control != '\t' && control != '\n' && control != '\r')
            refused.emplace_back(1, control);
    gmSvgTablet tablet;
    tablet.title("before");
    for (const std::string& text : refused)
        for (const char* rest : {"", "b"})
            EXPECT_THROW(tablet.title("a" + text + rest), gmMathError::OutOfRange) << testing::PrintToString(text);
    EXPECT_THAT(written(tablet), HasSubstr("<title>before</title>"));
}

TEST(SvgTablet, LeavesItToTheStreamWhetherThePictureWasTaken) {
    const gmSvgTablet tablet = triangle();
    const std::string expected = written(tablet);
    support::FullDisk disk(expected.size() - 1);
    std::ostream out(&disk);
    EXPECT_NO_THROW(tablet.write(out));
    EXPECT_TRUE(out.bad());
    EXPECT_NO_THROW(tablet.write(out)) << "into a stream that failed before";
    support::FullDisk another(10);
    std::ostream throwing(&another);
    throwing.exceptions(std::ios::badbit);
    EXPECT_THROW(tablet.write(throwing), std::ios::failure);
    EXPECT_EQ(written(tablet), expected);
}

TEST(SvgTablet, WritesThePictureAloneWhateverTheStreamFormats) {
    std::ostringstream out;
    out << std::setw(5000) << std::setfill('*');
    triangle().write(out);
    EXPECT_EQ(out.str(), written(triangle()));
}

/// A locale that writes numbers as nobody else does.
struct Odd : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\1"; }
};

TEST(SvgTablet, WritesTheSameInEveryLocale) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({1234567.5, 0.25}, {-0.5, 9876543.0}, black, gmUITablet::eImageLayer);
    const std::string expected = written(tablet);
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Odd));
    const std::string odd = written(tablet);
    std::locale::global(before);
    EXPECT_EQ(odd, expected);
}

TEST(SvgTablet, WritesTheSameInALocaleWithDecimalCommas) {
    gmSvgTablet tablet;
    tablet.drawLineSeg({1234567.5, 0.25}, {-0.5, 9876543.0}, black, gmUITablet::eImageLayer);
    const std::string expected = written(tablet);
    const std::string before = std::setlocale(LC_ALL, nullptr);
    bool changed = false;
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "nl_NL.UTF-8", "it_IT.UTF-8"})
        changed = changed || std::setlocale(LC_ALL, name) != nullptr;
    const std::string comma = written(tablet);
    std::setlocale(LC_ALL, before.c_str());
    if (!changed)
        GTEST_SKIP() << "no such locale here";
    EXPECT_EQ(comma, expected);
}

}  // namespace
