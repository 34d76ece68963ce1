#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "tools/io/feature_text.h"
#include "tools/io/outline.h"

namespace mokshape {

/// The outlines of a GeoJSON text: FeatureCollections, Features and bare geometries, inside each other as they like.
///
/// Polygons, MultiPolygons, LineStrings, MultiLineStrings and GeometryCollections of these are read. The property
/// `label` of the nearest feature becomes the label, 0 where there is none (or null). A null geometry is nothing.
/// Throws: FileError that names the feature and what is wrong: other geometries, positions that are not two finite
/// numbers, rings that are not closed, labels that are not whole numbers of 32 bits, JSON of another shape.
/// `notes`, if any, get what is read and lost.
std::vector<Outline> readGeoJson(std::string_view text, Notes* notes = nullptr);

/// The same for a text of one Feature or one geometry, which `as` gets as it stands there: also when it is refused, as
/// long as it is a JSON object. Messages do not name the only feature.
std::vector<Outline> readGeoJsonFeature(std::string_view text, FeatureText& as);

/// The geometry that writeGeoJson() writes for outlines of one feature, whatever their labels; null for none.
std::string geometryText(const std::vector<Outline>& outlines);

/// The properties that writeGeoJson() writes for outlines of this label.
std::string propertiesText(std::uint32_t label);

/// Writes a FeatureCollection, one feature a line, with the label as property. Outlines of one feature come together
/// again, unless their labels differ: then each part is a feature, and `notes` say so. Numbers round-trip.
void writeGeoJson(std::ostream& out, const std::vector<Outline>& outlines, Notes* notes = nullptr);

}  // namespace mokshape
