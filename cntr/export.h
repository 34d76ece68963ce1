// Export macro of the contour library; see foundation/export.h.
#pragma once

#define MOKCNTR_API __attribute__((visibility("default")))
