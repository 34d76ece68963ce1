#include "foundation/display/svgtablet.h"

#include <gmock/gmock.h>

#include <clocale>
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

TEST(SvgTablet, CarriesItsTitleWhateverItSays) {
    for (gmSvgTablet tablet : {triangle(), gmSvgTablet()}) {
        tablet.title("a < b & \"c\" > d\x01\n");
        const std::string text = written(tablet);
        EXPECT_TRUE(wellFormed(text)) << text;
        EXPECT_THAT(text, HasSubstr("<title>a &lt; b &amp; \"c\" &gt; d"));
        EXPECT_THAT(text, Not(HasSubstr("\x01")));
    }
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
