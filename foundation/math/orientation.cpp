#include "foundation/math/orientation.h"

#include <array>
#include <cmath>

namespace {

int sign(double value) {
    return (value > 0.0) - (value < 0.0);
}

/// Whether a - b is no rounded number, and so short that no product of two such is.
bool isShort(double a, double b) {
    const double difference = a - b;
    const double back = a - difference;
    const bool exact = a - (difference + back) == 0.0 && back - b == 0.0;
    return exact && static_cast<double>(static_cast<float>(difference)) == difference;
}

/// A number held exactly, as a sum of doubles that do not overlap, smallest first.
class ExactSum {
  public:
    /// Adds x * y. The rounding error of a product is a double: std::fma yields it.
    void addProduct(double x, double y) {
        const double product = x * y;
        add(std::fma(x, y, -product));
        add(product);
    }

    int sign() const {
        for (std::size_t i = size_; i-- > 0;)
            if (part_[i] != 0.0)
                return ::sign(part_[i]);
        return 0;
    }

  private:
    void add(double value) {
        for (std::size_t i = 0; i < size_; ++i) {
            // Knuth's two-sum: the rounded sum moves on, its error stays.
            const double sum = value + part_[i];
            const double kept = sum - value;
            part_[i] = (value - (sum - kept)) + (part_[i] - kept);
            value = sum;
        }
        part_[size_++] = value;
    }

    std::array<double, 12> part_{};
    std::size_t size_ = 0;
};

}  // namespace

int detail::exactOrientation(const gmVector<2>& a, const gmVector<2>& b, const gmVector<2>& c) {
    if (a == b || b == c || c == a)
        return 0;
    const double left = (b.x() - a.x()) * (c.y() - a.y());
    const double right = (b.y() - a.y()) * (c.x() - a.x());
    if (!std::isfinite(std::fabs(left) + std::fabs(right)))
        return sign(left - right);

    // On a grid, that of the pixels say, nothing was rounded.
    if (isShort(b.x(), a.x()) && isShort(b.y(), a.y()) && isShort(c.x(), a.x()) && isShort(c.y(), a.y()))
        return sign(left - right);

    ExactSum determinant;
    determinant.addProduct(a.x(), b.y());
    determinant.addProduct(-a.y(), b.x());
    determinant.addProduct(b.x(), c.y());
    determinant.addProduct(-b.y(), c.x());
    determinant.addProduct(c.x(), a.y());
    determinant.addProduct(-c.y(), a.x());
    return determinant.sign();
}
