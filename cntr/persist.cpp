// Every archive layout of the library and the registration of every class that archives hold.
#include "cntr/contour.h"
#include "cntr/defs.h"
#include "cntr/region.h"
#include "cntr/regionst.h"
#include "cntrtmpl/cntrtmpl.h"

namespace {

/// What contours and regions derived from before they carried a label. Old archives begin with its block; nothing else
/// is left of it, and nothing refers to it, so that it needs no mark.
class OldBase : public gmPersistent {
  public:
    OldBase(const char* file, int line) : file_(file), line_(line) {}

    void dispatchSerialize(gmArchive& archive) override {
        unsigned char version = 0;
        archive || version;
        if (version != 0)
            throw gmArchive::UnknownVersion(file_, line_);
        gmPersistent::dispatchSerialize(archive);
    }

  private:
    const char* file_;
    int line_;
};

/// A vector block: a version byte 0, the number of elements and the elements.
template <class T>
void archiveBlock(gmArchive& archive, std::vector<T>& elements, std::size_t bytesEach) {
    unsigned char version = 0;
    archive || version;
    if (version != 0)
        throw gmArchive::UnknownVersion(nullptr, 0);
    archiveVector(archive, elements, bytesEach);
}

void archiveCacheLimit(gmArchive& archive, std::int32_t& limit) {
    long size = limit;
    archive || size;
    if (size < 0)
        throw gmArchive::Malformed("a negative cachedVectorSize");
    limit = static_cast<std::int32_t>(size);
}

/// Runs content(). When it loads, caches are dropped before and after: a load that is refused half-way leaves new
/// members, which no old answer fits.
template <class CleanUp, class Content>
void archiveMembers(gmArchive& archive, CleanUp cleanUp, Content content) {
    if (!archive.isStoring())
        cleanUp();
    content();
    if (!archive.isStoring())
        cleanUp();
}

constexpr std::size_t vertexBytes = 2 * sizeof(double);
constexpr std::size_t handleBytes = sizeof(std::uint32_t);  // of an empty one
constexpr std::size_t edgeletBytes = vertexBytes + sizeof(std::uint16_t) + sizeof(std::uint8_t);

}  // namespace

// The order is that of all registrations of the library, and stays.
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::BadParams, 0x10004683>::sExemplar(
    typeid(gmContourDefs::BadParams), gmContourDefs::BadParams::make);
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::EmptyContour, 0x10004680>::sExemplar(
    typeid(gmContourDefs::EmptyContour), gmContourDefs::EmptyContour::make);
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::EmptyRegionSet, 0x10004682>::sExemplar(
    typeid(gmContourDefs::EmptyRegionSet), gmContourDefs::EmptyRegionSet::make);
template <>
gm_Instantiator gmContourDefs::NumberedError<gmContourDefs::RegionCannotBeSetOpen, 0x10004684>::sExemplar(
    typeid(gmContourDefs::RegionCannotBeSetOpen), gmContourDefs::RegionCannotBeSetOpen::make);
gm_Instantiator gmContour::sExemplar(typeid(gmContour), gmContour::make);
gm_Instantiator gmRegion::sExemplar(typeid(gmRegion), gmRegion::make);
gm_Instantiator gmRegionSet::sExemplar(typeid(gmRegionSet), gmRegionSet::make);
template <>
gm_Instantiator gmContourT<gmEdgelet>::sExemplar(typeid(gmContourT<gmEdgelet>), gmContourT<gmEdgelet>::make);
template <>
gm_Instantiator gmRegionSetT<gmEdgelet>::sExemplar(typeid(gmRegionSetT<gmEdgelet>), gmRegionSetT<gmEdgelet>::make);
template <>
gm_Instantiator gmRegionT<gmEdgelet>::sExemplar(typeid(gmRegionT<gmEdgelet>), gmRegionT<gmEdgelet>::make);

// ----- Errors

void gmContourDefs::Errors::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 0, [&](unsigned char version) { Errors::serialize_(archive, version); });
}

void gmContourDefs::Errors::serialize_(gmArchive& archive, unsigned char version) {
    if (version != 0)
        throw gmArchive::UnknownVersion("gmContourDefs::Errors", 0);
    gmException::dispatchSerialize(archive);
}

template <class Error, long Number>
void gmContourDefs::NumberedError<Error, Number>::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 0, [&](unsigned char version) { serialize_(archive, version); });
}

template <class Error, long Number>
void gmContourDefs::NumberedError<Error, Number>::serialize_(gmArchive& archive, unsigned char version) {
    if (version != 0)
        throw gmArchive::UnknownVersion(gm_Instantiator::className(typeid(Error)).c_str(), 0);
    Errors::dispatchSerialize(archive);
}

template class gmContourDefs::NumberedError<gmContourDefs::BadParams, 0x10004683>;
template class gmContourDefs::NumberedError<gmContourDefs::EmptyContour, 0x10004680>;
template class gmContourDefs::NumberedError<gmContourDefs::EmptyRegionSet, 0x10004682>;
template class gmContourDefs::NumberedError<gmContourDefs::RegionCannotBeSetOpen, 0x10004684>;

// ----- Contour

gmPersistent* gmContour::make() {
    return new gmContour;
}

void gmContour::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 1,
                [&](unsigned char version) { gmContour::serialize_(archive, version); });
}

void gmContour::serialize_(gmArchive& archive, unsigned char version) {
    if (version > 1)
        throw gmArchive::UnknownVersion("cntr/contour", 904);
    archiveMembers(
        archive, [&] { cleanCacheInfo(); },
        [&] {
            if (version == 1) {
                unsigned long label = label_;
                gmPersistent::dispatchSerialize(archive);
                archive || label;
                label_ = static_cast<std::uint32_t>(label);
                archive || closed_;
                archiveBlock(archive, points_, vertexBytes);
                archiveCacheLimit(archive, cachedVectorSize_);
            } else {
                OldBase("cntr/contour", 894).dispatchSerialize(archive);
                archiveUnlabelled(archive);
                archive || closed_;
            }
        });
}

void gmContour::archiveUnlabelled(gmArchive& archive) {
    archiveBlock(archive, points_, vertexBytes);
    unsigned char unused = 0;
    archive || unused;
    archiveCacheLimit(archive, cachedVectorSize_);
    label_ = 0;
}

// ----- Region

gmPersistent* gmRegion::make() {
    return new gmRegion;
}

void gmRegion::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 1, [&](unsigned char version) { gmRegion::serialize_(archive, version); });
}

void gmRegion::serialize_(gmArchive& archive, unsigned char version) {
    if (version > 1)
        throw gmArchive::UnknownVersion("cntr/region", 819);
    archiveMembers(
        archive, [&] { cleanCacheInfo(); },
        [&] {
            if (version == 1) {
                gmContour::dispatchSerialize(archive);
                archiveBlock(archive, holes_, handleBytes);
            } else {
                OldBase("cntr/region", 0).dispatchSerialize(archive);
                archiveUnlabelled(archive);
                gmContour::isClosed(false);
            }
        });
}

// ----- Region set

gmPersistent* gmRegionSet::make() {
    return new gmRegionSet;
}

void gmRegionSet::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 1,
                [&](unsigned char version) { gmRegionSet::serialize_(archive, version); });
}

void gmRegionSet::serialize_(gmArchive& archive, unsigned char version) {
    if (version > 1)
        throw gmArchive::UnknownVersion("cntr/regionst", 479);
    archiveMembers(
        archive, [&] { cleanCacheInfo(); },
        [&] {
            gmPersistent::dispatchSerialize(archive);
            archiveBlock(archive, regions_, handleBytes);
            if (version == 1)
                archiveCacheLimit(archive, cachedVectorSize_);
        });
}

// ----- Contour with edge points

template <class Datum>
gmPersistent* gmContourT<Datum>::make() {
    return new gmContourT;
}

template <class Datum>
void gmContourT<Datum>::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 1,
                [&](unsigned char version) { gmContourT::serialize_(archive, version); });
}

template <class Datum>
void gmContourT<Datum>::serialize_(gmArchive& archive, unsigned char version) {
    if (version > 1)
        throw gmArchive::UnknownVersion("cntrtmpl", 98);
    gmContour::dispatchSerialize(archive);
    // Behind the contour, which reports its change: an observer may have asked for the inverse of the old transform.
    if (!archive.isStoring())
        carried_.pointsFromData.invalidate();
    archiveBlock(archive, carried_.data, edgeletBytes);
    // Storing refuses what loading would.
    if (carried_.data.size() != points().size())
        throw gmArchive::Malformed("not as many edge points as vertices");
    if (version == 1)
        archive || carried_.dataFromPoints;
}

// ----- Region with edge points

template <class Datum>
gmPersistent* gmRegionT<Datum>::make() {
    return new gmRegionT;
}

template <class Datum>
void gmRegionT<Datum>::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 0,
                [&](unsigned char version) { gmRegionT::serialize_(archive, version); });
}

template <class Datum>
void gmRegionT<Datum>::serialize_(gmArchive& archive, unsigned char version) {
    if (version != 0)
        throw gmArchive::UnknownVersion("cntrtmpl", 186);
    gmRegion::dispatchSerialize(archive);
    // What was there belongs to other vertices.
    if (!archive.isStoring()) {
        this->carried_ = {};
        holes_.clear();
    }
}

// ----- Region set with edge points

template <class Datum>
gmPersistent* gmRegionSetT<Datum>::make() {
    return new gmRegionSetT;
}

template <class Datum>
void gmRegionSetT<Datum>::dispatchSerialize(gmArchive& archive) {
    archiveOnce(archive, this, sizeof *this, 0,
                [&](unsigned char version) { gmRegionSetT::serialize_(archive, version); });
}

template <class Datum>
void gmRegionSetT<Datum>::serialize_(gmArchive& archive, unsigned char version) {
    if (version != 0)
        throw gmArchive::UnknownVersion("cntrtmpl", 283);
    gmRegionSet::dispatchSerialize(archive);
    archiveBlock(archive, regions_, handleBytes);
}

// One by one: the rest of these classes is instantiated with its source.
template gmPersistent* gmContourT<gmEdgelet>::make();
template void gmContourT<gmEdgelet>::dispatchSerialize(gmArchive&);
template void gmContourT<gmEdgelet>::serialize_(gmArchive&, unsigned char);
template gmPersistent* gmRegionT<gmEdgelet>::make();
template void gmRegionT<gmEdgelet>::dispatchSerialize(gmArchive&);
template void gmRegionT<gmEdgelet>::serialize_(gmArchive&, unsigned char);
template gmPersistent* gmRegionSetT<gmEdgelet>::make();
template void gmRegionSetT<gmEdgelet>::dispatchSerialize(gmArchive&);
template void gmRegionSetT<gmEdgelet>::serialize_(gmArchive&, unsigned char);
