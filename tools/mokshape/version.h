#pragma once

namespace mokshape {

inline constexpr char version[] = "14.0.0";

}  // namespace mokshape
