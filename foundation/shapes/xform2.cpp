#include "foundation/shapes/xform2.h"

#include <cmath>

#include "foundation/object/exception.h"

namespace {

gmPtrHandle<gm2XformBase> linear(const gmXform<2>& xform) {
    return gmPtrHandle<gm2XformBase>(new gm2XformLinear(xform));
}

void checkVersion(unsigned char version, const char* className) {
    if (version != 0)
        throw gmArchive::UnknownVersion(className, 0);
}

}  // namespace

gm_Instantiator gm2XformLinear::sExemplar(typeid(gm2XformLinear), gm2XformLinear::make);
gm_Instantiator gm2Rigid::sExemplar(typeid(gm2Rigid), gm2Rigid::make);

gm2XformBase::~gm2XformBase() = default;

gmPersistent* gm2XformLinear::make() {
    return new gm2XformLinear;
}

gmPtrHandle<gm2XformBase> gm2XformLinear::clone() const {
    return linear(xform_);
}

gmPtrHandle<gm2XformBase> gm2XformLinear::composeBase(const gm2XformBase& inner) const {
    return linear(xform_ * inner.linearXform());
}

gmPtrHandle<gm2XformBase> gm2XformLinear::inverseBase() const {
    return linear(xform_.inverse());
}

void gm2XformLinear::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 0, [&](unsigned char version) { serialize_(archive, version); });
}

void gm2XformLinear::serialize_(gmArchive& archive, unsigned char version) {
    checkVersion(version, "gm2XformLinear");
    gmVector<2> translation = xform_.translation();
    gmVector<2> row0(xform_.matrix()(0, 0), xform_.matrix()(0, 1));
    gmVector<2> row1(xform_.matrix()(1, 0), xform_.matrix()(1, 1));
    archive || translation || row0 || row1;
    xform_ = gmXform<2>(gmMatrix<2>(row0.x(), row0.y(), row1.x(), row1.y()), translation);
}

gmPersistent* gm2Rigid::make() {
    return new gm2Rigid;
}

gmXform<2> gm2Rigid::linearXform() const {
    return gmXform<2>(gmMatrix<2>(angle_, angle_, 1.0, 1.0), translation_);
}

gmPtrHandle<gm2XformBase> gm2Rigid::clone() const {
    return gmPtrHandle<gm2XformBase>(new gm2Rigid(angle_, translation_));
}

gmPtrHandle<gm2XformBase> gm2Rigid::composeBase(const gm2XformBase& inner) const {
    return linear(linearXform() * inner.linearXform());
}

gmPtrHandle<gm2XformBase> gm2Rigid::inverseBase() const {
    const gmDegree back(-angle_.value());
    const gmVector<2> translation = -(gmMatrix<2>(back, back, 1.0, 1.0) * translation_);
    if (!std::isfinite(translation.x()) || !std::isfinite(translation.y()))
        throw gmMathError::Singular("transform has no inverse");
    return gmPtrHandle<gm2XformBase>(new gm2Rigid(back, translation));
}

void gm2Rigid::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 0, [&](unsigned char version) { serialize_(archive, version); });
}

void gm2Rigid::serialize_(gmArchive& archive, unsigned char version) {
    checkVersion(version, "gm2Rigid");
    double degrees = angle_.value();
    archive || degrees || translation_;
    angle_ = gmDegree(degrees);
}
