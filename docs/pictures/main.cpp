// Draws the pictures of the guide.
// usage: docs_pictures FOLDER
#include <exception>
#include <iostream>

#include "docs/pictures/pictures.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: docs_pictures FOLDER\n";
        return 1;
    }
    try {
        for (const auto draw :
             {pictures::drawFrontPage, pictures::drawContours, pictures::drawRegions, pictures::drawRegionSets,
              pictures::drawMoments, pictures::drawArchives, pictures::drawDrawing})
            draw(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "docs_pictures: " << error.what() << '\n';
        return 1;
    }
}
