#include "foundation/object/exception.h"
#include "foundation/shapes/circle.h"
#include "foundation/shapes/ellipse.h"
#include "foundation/shapes/line.h"
#include "foundation/shapes/lineseg.h"
#include "foundation/shapes/point.h"
#include "foundation/shapes/polygon.h"
#include "foundation/shapes/rect.h"

void gmShape::dispatchSerialize(gmArchive& archive) {
    // Keyed by the whole object: a shape is visited as itself, under whatever class it is met.
    archiveOnce(archive, dynamic_cast<void*>(this), sizeof *this, 0, [&](unsigned char version) {
        if (version != 0)
            throw gmArchive::UnknownVersion("gmShape", 0);
        archiveContent(archive);
    });
}

bool gmShape::loadSimple(gmArchive& archive) {
    archiveContent(archive);
    return true;
}

void gmPoint::archiveContent(gmArchive& archive) {
    archive || exists_ || position_;
    if (!exists_)
        position_ = gmVector<2>();
}

void gmLine::archiveContent(gmArchive& archive) {
    archive || through_ || direction_;
}

void gmLineSeg::archiveContent(gmArchive& archive) {
    archive || p1_ || p2_;
}

void gmRect::archiveContent(gmArchive& archive) {
    gmVector<2> lower = lower_;
    gmVector<2> upper = upper_;
    archive || lower || upper;
    *this = gmRect(FromCorners{}, lower, upper);
}

void gmCircle::archiveContent(gmArchive& archive) {
    archive || center_ || radius_;
}

void gmEllipse::archiveContent(gmArchive& archive) {
    double rotation = geom_.rotation.value();
    archive || geom_.center || geom_.xRadius || geom_.yRadius || rotation;
    geom_.rotation = gmRadian(rotation);
}

void gmPolygon::archiveContent(gmArchive& archive) {
    unsigned char fillMode = static_cast<unsigned char>(fillMode_);
    archive || fillMode;
    if (fillMode > eNonZero)
        throw gmArchive::Malformed("no such fill mode");
    fillMode_ = static_cast<PolyFillMode>(fillMode);
    archiveVector(archive, vertices_, 2 * sizeof(double));
}
