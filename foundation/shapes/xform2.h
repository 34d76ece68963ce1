#pragma once

#include <cstddef>

#include "foundation/math/angle.h"
#include "foundation/math/vector.h"
#include "foundation/math/xform.h"
#include "foundation/object/handle.h"
#include "foundation/object/instantiator.h"
#include "foundation/object/persistent.h"

/// A 2-D transform that shapes share through handles and archives hold by the name of its class.
class MOKSTD_API gm2XformBase : public virtual gmPersistent, public virtual gmRepBase {
  public:
    ~gm2XformBase() override;

    /// A new transform equal to this one.
    virtual gmPtrHandle<gm2XformBase> clone() const = 0;
    /// A new transform that maps p to this(inner(p)). Throws: gmMathError::Singular when either is not linear.
    virtual gmPtrHandle<gm2XformBase> composeBase(const gm2XformBase& inner) const = 0;
    /// A new transform that undoes this one. Throws: gmMathError::Singular when there is none.
    virtual gmPtrHandle<gm2XformBase> inverseBase() const = 0;
    /// Whether the transform is affine, so that linearXform() describes it.
    virtual bool isLinear() const = 0;
    /// The transform as an affine map. Throws: gmMathError::Singular when it is not linear.
    virtual gmXform<2> linearXform() const = 0;
    /// Where the transform takes the point.
    virtual gmVector<2> mapPoint(const gmVector<2>& point) const = 0;

  protected:
    gm2XformBase() = default;
    gm2XformBase(const gm2XformBase&) = default;
    // Nothing of the bases is part of a transform's value.
    gm2XformBase& operator=(const gm2XformBase&) { return *this; }

    virtual void serialize_(gmArchive& archive, unsigned char version) = 0;
};

/// An affine transform. Default: the identity. Archived as a version byte 0, the translation, the matrix row by row.
class MOKSTD_API gm2XformLinear : public gm2XformBase {
  public:
    gm2XformLinear() = default;
    explicit gm2XformLinear(const gmXform<2>& xform) : xform_(xform) {}

    static void* operator new(std::size_t size) { return ::operator new(size); }
    static void operator delete(void* object) { ::operator delete(object); }

    gmPtrHandle<gm2XformBase> clone() const override;
    gmPtrHandle<gm2XformBase> composeBase(const gm2XformBase& inner) const override;
    gmPtrHandle<gm2XformBase> inverseBase() const override;
    bool isLinear() const override { return true; }
    gmXform<2> linearXform() const override { return xform_; }
    gmVector<2> mapPoint(const gmVector<2>& point) const override { return xform_ * point; }

    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    void serialize_(gmArchive& archive, unsigned char version) override;

  private:
    gmXform<2> xform_;
};

/// A rotation about the origin, then a translation. Default: the identity. Archived as a version byte 0, the
/// angle in degrees and the translation.
class MOKSTD_API gm2Rigid : public gm2XformBase {
  public:
    gm2Rigid() = default;
    gm2Rigid(const gmDegree& angle, const gmVector<2>& translation) : angle_(angle), translation_(translation) {}

    gmRadian angle() const { return angle_; }
    const gmVector<2>& translation() const { return translation_; }

    gmPtrHandle<gm2XformBase> clone() const override;
    /// A gm2XformLinear.
    gmPtrHandle<gm2XformBase> composeBase(const gm2XformBase& inner) const override;
    /// A gm2Rigid.
    gmPtrHandle<gm2XformBase> inverseBase() const override;
    bool isLinear() const override { return true; }
    gmXform<2> linearXform() const override;
    gmVector<2> mapPoint(const gmVector<2>& point) const override { return linearXform() * point; }

    static gmPersistent* make();
    static gm_Instantiator sExemplar;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    void serialize_(gmArchive& archive, unsigned char version) override;

  private:
    gmDegree angle_;
    gmVector<2> translation_;
};
