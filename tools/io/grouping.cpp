#include "tools/io/grouping.h"

#include <algorithm>

namespace mokshape {

bool Feature::hasOnlyLines() const {
    return std::all_of(parts.begin(), parts.end(), [](const Part& part) { return part.isLine; });
}

bool Feature::hasOnlyPolygons() const {
    return std::none_of(parts.begin(), parts.end(), [](const Part& part) { return part.isLine; });
}

bool Feature::hasOneLabel(const std::vector<Outline>& outlines) const {
    return std::all_of(parts.begin(), parts.end(), [&](const Part& part) {
        return outlines[part.first].label == outlines[parts.front().first].label;
    });
}

std::vector<Feature> groupByFeature(const std::vector<Outline>& outlines) {
    std::vector<Feature> features;
    for (std::size_t i = 0; i < outlines.size(); ++i) {
        const Outline& outline = outlines[i];
        const bool newFeature = i == 0 || outlines[i - 1].feature != outline.feature;
        if (newFeature)
            features.emplace_back();
        if (newFeature || outline.kind != Outline::Kind::eHole)
            features.back().parts.push_back({i, i, outline.kind == Outline::Kind::eLine});
        features.back().parts.back().last = i + 1;
    }
    return features;
}

}  // namespace mokshape
