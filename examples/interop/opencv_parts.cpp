// Parts that OpenCV traces from a picture, measured and drawn here, and drawn once more by OpenCV.
// usage: example_opencv_parts FOLDER
#include "interop/opencv.h"

#include <fstream>
#include <iomanip>
#include <iostream>
#include <opencv2/imgproc.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "cntr/cntr.h"
#include "foundation/display/svgtablet.h"

namespace {

constexpr gmColor ink(31, 54, 84);
constexpr gmColor mark(196, 48, 43);
constexpr gmColor paper(252, 251, 248);

/// Bright parts on a dark table, a little out of focus: a washer, a plate with two holes, a pin in one of them, and a
/// bracket.
cv::Mat pictureOfParts() {
    const cv::Scalar metal(210.0);
    const cv::Scalar table(35.0);
    cv::Mat picture(240, 320, CV_8UC1, table);
    cv::circle(picture, {70, 70}, 48, metal, cv::FILLED);
    cv::circle(picture, {70, 70}, 20, table, cv::FILLED);
    cv::rectangle(picture, cv::Point(140, 25), cv::Point(300, 110), metal, cv::FILLED);
    cv::circle(picture, {180, 67}, 16, table, cv::FILLED);
    cv::circle(picture, {250, 67}, 30, table, cv::FILLED);
    cv::circle(picture, {245, 70}, 12, metal, cv::FILLED);
    const std::vector<cv::Point> bracket = {{30, 140}, {290, 140}, {290, 170}, {70, 170}, {70, 220}, {30, 220}};
    cv::fillPoly(picture, std::vector<std::vector<cv::Point>>{bracket}, metal);
    cv::GaussianBlur(picture, picture, {5, 5}, 0.0);
    return picture;
}

void drawPart(gmUITablet& tablet, const gmRegion& part, const gmVector<2>& centre) {
    part.draw(tablet, gmContourDefs::eOutline, ink, gmUITablet::eImageLayer);
    for (const RegionCPtr& hole : part.holes())
        hole->draw(tablet, gmContourDefs::eOutline, ink, gmUITablet::eImageLayer);
    for (const gmVector<2>& arm : {gmVector<2>(4, 0), gmVector<2>(0, 4)})
        gmContour({centre - arm, centre + arm}, false)
            .draw(tablet, gmContourDefs::eHighlighted, mark, gmUITablet::eOverlayLayer);
}

void run(const std::string& folder) {
    cv::Mat binary;
    cv::threshold(pictureOfParts(), binary, 128.0, 255.0, cv::THRESH_BINARY);

    std::vector<std::vector<cv::Point>> contours;
    std::vector<cv::Vec4i> hierarchy;
    cv::findContours(binary, contours, hierarchy, cv::RETR_CCOMP, cv::CHAIN_APPROX_NONE);
    const gmRegionSet parts(gnOpenCv::regionsFrom(contours, hierarchy));

    gmSvgTablet tablet;
    tablet.title("Parts traced from a picture, with their centres of mass");
    tablet.background(paper);
    tablet.size(640, 462);
    std::cout << std::fixed << std::setprecision(1);
    for (const RegionCPtr& part : parts.regions()) {
        const gmVector<2> centre = part->centerOfMass(true);
        std::cout << "contour " << part->label() << ": " << part->holes().size() << " holes, " << part->area(true)
                  << " square pixels around (" << centre.x() << ", " << centre.y() << ")\n";
        drawPart(tablet, *part, centre);
    }

    std::vector<cv::Vec4i> order;
    const std::vector<std::vector<cv::Point>> outlines = gnOpenCv::contoursFrom(parts.regions(), order);
    cv::Mat drawn = cv::Mat::zeros(binary.size(), CV_8UC1);
    cv::drawContours(drawn, outlines, -1, cv::Scalar(255.0), cv::FILLED, cv::LINE_8, order);
    std::cout << "pixels that OpenCV draws otherwise: " << cv::countNonZero(drawn != binary) << '\n';

    gmContour half;
    parts.regions().front()->map(gmXform<2>({0.5, 0, 0, 0.5}, {0, 0}), half);
    const std::vector<cv::Point> rounded = gnOpenCv::pointsFrom<cv::Point>(half, gnInterop::eNearest);
    std::cout << "at half the size, rounded: " << rounded.size() << " points\n";

    std::ofstream file(folder + "/opencv-parts.svg");
    tablet.write(file);
    file.close();
    if (!file)
        throw std::runtime_error(folder + "/opencv-parts.svg cannot be written");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: example_opencv_parts FOLDER\n";
        return 1;
    }
    try {
        run(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "example_opencv_parts: " << error.what() << '\n';
        return 1;
    }
}
