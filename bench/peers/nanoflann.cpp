// nanoflann's tree of points.
#include <cstdint>
#include <nanoflann.hpp>

#include "bench/peers/contest.h"

namespace peers {
namespace {

struct Cloud {
    Points points;

    std::size_t kdtree_get_point_count() const { return points.size(); }
    double kdtree_get_pt(std::size_t i, std::size_t axis) const { return axis == 0 ? points[i].x() : points[i].y(); }
    template <class Box>
    bool kdtree_get_bbox(Box&) const {
        return false;
    }
};

using Tree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Cloud>, Cloud, 2>;

/// The tree refers to its points.
struct Vertices {
    explicit Vertices(const Points& points) : cloud{points}, tree(2, cloud) { tree.buildIndex(); }

    Cloud cloud;
    Tree tree;
};

const Entry entries[] = {
    {Row::closestVertex, "nanoflann",
     [](const Inputs& in) {
         return repeatedPlace(in.questions, [kept = std::make_shared<Vertices>(in.outline), &in](std::size_t i) {
             const Point& question = pick(in.questions, i);
             const double at[2] = {question.x(), question.y()};
             std::uint32_t index = 0;
             double square = 0.0;
             kept->tree.knnSearch(at, 1, &index, &square);
             return kept->cloud.points[index];
         });
     }},
    {Row::verticesWithin, "nanoflann",
     [](const Inputs& in) {
         std::vector<std::pair<std::uint32_t, double>> found;
         nanoflann::SearchParams unsorted;
         unsorted.sorted = false;
         return repeated([kept = std::make_shared<Vertices>(in.outline), found, unsorted, &in](std::size_t i) mutable {
             const Point& question = pick(in.nearVertices, i);
             const double at[2] = {question.x(), question.y()};
             return kept->tree.radiusSearch(at, in.tolerance * in.tolerance, found, unsorted);
         });
     }},
};

}  // namespace
}  // namespace peers
