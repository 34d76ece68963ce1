// Comparison to the bit: two NaNs are the same, +0 and -0 are the same, and nothing else that differs is.
#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <vector>

#include "tests/reference/inertia.h"
#include "tests/support/text.h"

namespace support {

inline bool sameBits(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}
inline bool sameBits(bool a, bool b) {
    return a == b;
}
inline bool sameBits(int a, int b) {
    return a == b;
}
inline bool sameBits(long a, long b) {
    return a == b;
}
inline bool sameBits(const gmVector<2>& a, const gmVector<2>& b) {
    return sameBits(a.x(), b.x()) && sameBits(a.y(), b.y());
}
inline bool sameBits(const gmRect& a, const gmRect& b) {
    return sameBits(a.lower(), b.lower()) && sameBits(a.upper(), b.upper());
}
inline bool sameBits(const gmCircle& a, const gmCircle& b) {
    return sameBits(a.center(), b.center()) && sameBits(a.radius(), b.radius());
}
inline bool sameBits(const gmEllipse& a, const gmEllipse& b) {
    return sameBits(a.center(), b.center()) && sameBits(a.xRadius(), b.xRadius()) &&
           sameBits(a.yRadius(), b.yRadius()) && sameBits(a.rotation().value(), b.rotation().value());
}
inline bool sameBits(const gmLineSeg& a, const gmLineSeg& b) {
    return sameBits(a.p1(), b.p1()) && sameBits(a.p2(), b.p2());
}
inline bool sameBits(const gmMatrix<2>& a, const gmMatrix<2>& b) {
    return sameBits(a(0, 0), b(0, 0)) && sameBits(a(0, 1), b(0, 1)) && sameBits(a(1, 0), b(1, 0)) &&
           sameBits(a(1, 1), b(1, 1));
}
inline bool sameBits(const gm_InertiaData& a, const gm_InertiaData& b) {
    return sameBits(a.area(), b.area()) && sameBits(a.centerOfMass(), b.centerOfMass()) &&
           sameBits(a.inertiaMatrix(), b.inertiaMatrix());
}
template <class T>
bool sameBits(const std::vector<T>& a, const std::vector<T>& b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (!sameBits(static_cast<const T&>(a[i]), static_cast<const T&>(b[i])))
            return false;
    return true;
}

/// For EXPECT_TRUE: whether the two are the same to the bit, and both in full when they are not.
template <class T>
testing::AssertionResult same(const T& actual, const T& expected) {
    if (sameBits(actual, expected))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << text(actual) << "\ninstead of\n" << text(expected);
}

/// The plain moments as the library's record.
inline gm_InertiaData inertiaData(const reference::Moments& moments) {
    return gm_InertiaData(moments.area, moments.center, gmMatrix<2>(moments.xx, moments.xy, moments.xy, moments.yy));
}

}  // namespace support
