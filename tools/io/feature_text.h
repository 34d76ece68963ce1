#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mokshape {

/// A GeoJSON Feature as it stands in a text. Every value is JSON to the byte, but for blanks between its tokens:
/// numbers keep their digits, strings their escapes, objects their order.
struct FeatureText {
    struct Member {
        std::string name;
        std::string key;  ///< the name as JSON
        std::string value;
    };

    std::vector<Member> members;  ///< besides "type" and "geometry", in their order
    std::string geometry = "null";

    /// The value of the member "id"; empty where there is none.
    std::string id() const;
};

/// Takes the text of one JSON object apart: a Feature, or a geometry that becomes that of a Feature without members. Of
/// members of the same name the last one counts, and all are kept. `text` must be valid JSON.
FeatureText takeApart(std::string_view text, bool isGeometry);

/// The Feature on one line, without its end. Properties are null where there are none.
std::string textOf(const FeatureText& feature);

}  // namespace mokshape
