#pragma once

#include "foundation/export.h"
#include "foundation/object/persistent.h"
#include "foundation/object/repbase.h"

/// Base of the primitive shapes: small values that copy freely, and that archives and handles can hold.
///
/// In an archive a shape is a version byte 0 and its bare content, the numbers named at each class.
class MOKSTD_API gmShape : public virtual gmPersistent, public virtual gmRepBase {
  public:
    gmShape() = default;
    gmShape(const gmShape&) = default;
    // Nothing of the bases is part of a shape's value.
    gmShape& operator=(const gmShape&) { return *this; }
    ~gmShape() override;

  protected:
    void dispatchSerialize(gmArchive& archive) override;
    /// Loads the bare content and answers true: every shape has such a form.
    bool loadSimple(gmArchive& archive) override;

  private:
    /// Passes the bare content through the archive, both ways.
    virtual void archiveContent(gmArchive& archive) = 0;
};
