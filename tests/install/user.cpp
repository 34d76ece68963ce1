// A program of somebody else's: it includes the installed headers and links the installed libraries.
#include <iostream>

#include "cntr/cntr.h"

int main() {
    const gmContour contour({{0.0, 0.0}, {4.0, 0.0}, {4.0, 3.0}}, true);
    try {
        gmContour().meanPosition();  // the error's type information must come across the library's border
    } catch (const gmContourDefs::Errors& error) {
        std::cout << contour.length() << ' ' << error.what() << '\n';
        return contour.length() == 12.0 ? 0 : 1;
    }
    return 1;
}
