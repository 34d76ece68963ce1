// Prints one number made of the bits of many answers. It must be the same whatever compiler and level built this
// program and the library's sources: only + - * / and square root are involved.
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>

#include "cntr/contour.h"
#include "cntr/inertia.h"
#include "cntr/region.h"

namespace {

class Digest {
  public:
    void add(double value) {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        for (int i = 0; i < 8; ++i)
            value_ = (value_ ^ ((bits >> (8 * i)) & 0xff)) * 0x100000001b3ULL;
    }
    void add(const gmVector<2>& v) {
        add(v.x());
        add(v.y());
    }
    void add(const gmRect& rect) {
        add(rect.lower());
        add(rect.upper());
    }
    std::uint64_t value() const { return value_; }

  private:
    std::uint64_t value_ = 0xcbf29ce484222325ULL;
};

gmVector<2> position(std::mt19937& engine) {
    // One draw after the other: the order in which arguments are evaluated is the compiler's.
    const double x = static_cast<double>(engine()) / 4294967.296 - 500.0;
    const double y = static_cast<double>(engine()) / 4294967.296 - 500.0;
    return {x, y};
}

void addContour(Digest& digest, const std::vector<gmVector<2>>& points, bool closed, std::mt19937& engine) {
    const gmContour contour(points, closed);
    const gmVector<2> p = position(engine);
    const gmVector<2> q = position(engine);
    digest.add(contour.length());
    digest.add(contour.meanPosition());
    digest.add(contour.closestPoint(p, false));
    digest.add(contour.distToPoint(q, true));
    for (const int index : contour.vertexIndex(p, 200.0))
        digest.add(index);
    for (const gmVector<2>& crossing : contour.intersections(gmLineSeg(p, q), true))
        digest.add(crossing);
    digest.add(contour.isSelfIntersecting() ? 1.0 : 0.0);
    digest.add(contour.encloseRect(gmXform<2>(gmMatrix<2>(0.8, -0.6, 0.6, 0.8), p)));
    digest.add(contour.diameter(gmContourDefs::eMaxVertexPair));
    digest.add(contour.encloseCircle(gmContourDefs::eFromFirstVertex).radius());
    digest.add(gf_Area(points));
    const gm_InertiaData moments = gf_InertiaDataPolygon(points);
    digest.add(moments.area());
    digest.add(moments.centerOfMass());
    for (int row = 0; row < 2; ++row)
        digest.add(moments.inertiaMatrix() * gmVector<2>(1.0, row));
}

/// What clean-up makes of the outline; which way an edge's two sides lie asks for angles, but of them only the answer.
void addRegion(Digest& digest, const std::vector<gmVector<2>>& points) {
    const gmRegion region(points);
    gmRegion cleaned;
    try {
        region.regularize(cleaned);
        for (const gmVector<2>& vertex : cleaned.points())
            digest.add(vertex);
        region.outerHull(cleaned);
        for (const gmVector<2>& vertex : cleaned.points())
            digest.add(vertex);
    } catch (const gmContourDefs::Errors& error) {
        digest.add(static_cast<double>(error.errorNumber()));
    }
    region.convexHull(cleaned);
    digest.add(static_cast<double>(cleaned.points().size()));
}

}  // namespace

int main() {
    std::mt19937 engine(20);
    Digest digest;
    for (int i = 0; i < 2000; ++i) {
        std::vector<gmVector<2>> points;
        for (unsigned n = 2 + engine() % 12; n > 0; --n)
            points.push_back(position(engine));
        const bool closed = engine() % 2 == 0;
        addContour(digest, points, closed, engine);
        addRegion(digest, points);
    }
    std::printf("%016llx\n", static_cast<unsigned long long>(digest.value()));
}
