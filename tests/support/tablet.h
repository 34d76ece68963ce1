#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "foundation/display/uitablet.h"
#include "tests/support/text.h"

namespace support {

/// A tablet that keeps every call, for comparing whole lists of them.
class RecordingTablet : public gmUITablet {
  public:
    struct Call {
        gmPair<double> from;
        gmPair<double> to;
        gmColor color;
        Layers layers = eImageLayer;

        friend bool operator==(const Call& a, const Call& b) {
            return a.from == b.from && a.to == b.to && a.color == b.color && a.layers == b.layers;
        }
        friend void PrintTo(const Call& call, std::ostream* out) {
            *out << text(gmVector<2>(call.from.x(), call.from.y())) << " to "
                 << text(gmVector<2>(call.to.x(), call.to.y())) << " in " << int(call.color.red()) << " "
                 << int(call.color.green()) << " " << int(call.color.blue()) << " on layer " << int(call.layers);
        }
    };

    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                     Layers layers) override {
        calls.push_back({from, to, color, layers});
    }

    std::vector<Call> calls;
};

using Calls = std::vector<RecordingTablet::Call>;

/// Keeps every call, and then does something: told how many calls there were before.
class ActingTablet : public RecordingTablet {
  public:
    explicit ActingTablet(std::function<void(std::size_t)> action) : action_(std::move(action)) {}

    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                     Layers layers) override {
        RecordingTablet::drawLineSeg(from, to, color, layers);
        action_(calls.size() - 1);
    }

  private:
    std::function<void(std::size_t)> action_;
};

struct TabletIsFull : std::runtime_error {
    TabletIsFull() : std::runtime_error("the tablet is full") {}
};

/// Keeps so many calls and refuses the next.
class SmallTablet : public RecordingTablet {
  public:
    explicit SmallTablet(std::size_t room) : room_(room) {}

    void drawLineSeg(const gmPair<double>& from, const gmPair<double>& to, const gmColor& color,
                     Layers layers) override {
        if (calls.size() == room_)
            throw TabletIsFull();
        RecordingTablet::drawLineSeg(from, to, color, layers);
    }

  private:
    std::size_t room_;
};

/// What shapes are drawn with where any colour and layer will do.
inline constexpr gmColor orange(255, 128, 0);
inline constexpr gmUITablet::Layers layer = gmUITablet::eOverlayLayer;

inline Calls outlineCalls(const gmContour& shape, gmContourDefs::DrawMode mode = gmContourDefs::eOutline) {
    RecordingTablet tablet;
    shape.draw(tablet, mode, orange, layer);
    return tablet.calls;
}

/// For regions and for region sets.
template <class Shape>
Calls ownCalls(const Shape& shape) {
    RecordingTablet tablet;
    shape.draw(tablet, orange, layer);
    return tablet.calls;
}

inline RecordingTablet::Call edge(double x1, double y1, double x2, double y2) {
    return {{x1, y1}, {x2, y2}, orange, layer};
}

/// The calls for the edges of an outline, by nothing but the rule of their order.
inline Calls edgesOf(const reference::Points& points, bool closed) {
    Calls calls;
    for (std::size_t i = closed ? 0 : 1; i < points.size(); ++i) {
        const gmVector<2>& from = points[i == 0 ? points.size() - 1 : i - 1];
        calls.push_back(edge(from.x(), from.y(), points[i].x(), points[i].y()));
    }
    return calls;
}

}  // namespace support
