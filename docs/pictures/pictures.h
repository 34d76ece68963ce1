// The pictures of the guide, one function a page. Each writes into the folder.
#pragma once

#include <string>

namespace pictures {

void drawFrontPage(const std::string& folder);
void drawContours(const std::string& folder);
void drawRegions(const std::string& folder);
void drawRegionSets(const std::string& folder);
void drawMoments(const std::string& folder);
void drawArchives(const std::string& folder);
void drawDrawing(const std::string& folder);

}  // namespace pictures
