#pragma once

#include <ostream>
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

}  // namespace support
