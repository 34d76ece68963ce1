// What an archive may hold at most, and that storing and loading agree about it.
#include <cmath>
#include <limits>
#include <sstream>

#include "tests/foundation/object/nodes.h"
#include "tests/foundation/support.h"

/// As few bytes as an object can take: a name of one letter and a version byte.
class T : public virtual gmPersistent, public virtual gmRepBase {
  public:
    static gmPersistent* make() { return new T; }

  protected:
    void dispatchSerialize(gmArchive& archive) override {
        archiveOnce(archive, this, sizeof *this, 0, [](unsigned char) {});
    }
};

namespace {

using support::header;
using support::Node;

using NodeHandle = gmPtrHandle<Node>;

const gm_Instantiator tinyExemplar(typeid(T), T::make);

/// Five nodes behind each other, under a limit.
std::string storedWith(double objectsPerByte) {
    NodeHandle nodes = support::chain(5);
    std::ostringstream out;
    gmArchive archive(out);
    archive.maxObjectsPerByte(objectsPerByte);
    archive || nodes;
    return out.str();
}

long loadedWith(double objectsPerByte, const std::string& bytes) {
    std::istringstream in(bytes);
    gmArchive archive(in);
    archive.maxObjectsPerByte(objectsPerByte);
    NodeHandle nodes;
    archive || nodes;
    return nodes->number;
}

TEST(ArchiveLimits, AllowAnObjectForEveryTenBytesUnlessSet) {
    std::ostringstream out;
    const gmArchive archive(out);
    EXPECT_EQ(archive.maxObjectsPerByte(), 0.1);
}

TEST(ArchiveLimits, NoNumberOfObjectsIsNegativeOrNaN) {
    std::ostringstream out;
    gmArchive archive(out);
    archive.maxObjectsPerByte(2.0);
    EXPECT_THROW(archive.maxObjectsPerByte(-0.1), gmArchive::OutOfRange);
    EXPECT_THROW(archive.maxObjectsPerByte(std::nan("")), gmArchive::OutOfRange);
    EXPECT_EQ(archive.maxObjectsPerByte(), 2.0);
    archive.maxObjectsPerByte(0.0);
    EXPECT_EQ(archive.maxObjectsPerByte(), 0.0);
}

TEST(ArchiveLimits, AsManyObjectsAsBytesAllowAreLoadedAsTheyAreStored) {
    // The name of the first node ends at byte 26: "MOKA" and the format number, the node's number and "support::Node".
    // Every other node takes 30 bytes, which is more than its share.
    const std::string bytes = storedWith(1.0 / 26.0);
    EXPECT_EQ(loadedWith(1.0 / 26.0, bytes), 1);
    const double less = std::nextafter(1.0 / 26.0, 0.0);
    EXPECT_THROW(storedWith(less), gmArchive::OutOfRange);
    EXPECT_THROW(loadedWith(less, bytes), gmArchive::OutOfRange);
}

TEST(ArchiveLimits, ARefusedPassNeitherWritesNorCounts) {
    std::ostringstream out;
    gmArchive archive(out);
    archive.maxObjectsPerByte(1.0 / 30.0);
    NodeHandle one(new Node(1));
    NodeHandle many = support::chain(5);
    EXPECT_THROW(archive || many, gmArchive::OutOfRange);
    EXPECT_THROW(archive || one, gmArchive::OutOfRange);  // 26 bytes: those of the refused pass do not count
    EXPECT_EQ(out.str(), header);
    archive.maxObjectsPerByte(1.0 / 26.0);
    EXPECT_NO_THROW(archive || one);
}

TEST(ArchiveLimits, TheDefaultTakesEveryObjectWithAVersion) {
    std::ostringstream out;
    gmArchive storing(out);
    constexpr int count = 1000;
    for (int i = 0; i < count; ++i) {
        gmPtrHandle<T> tiny(new T);
        storing || tiny;
    }
    EXPECT_EQ(out.str().size(), 5u + 10u * count);
    std::istringstream in(out.str());
    gmArchive loading(in);
    for (int i = 0; i < count; ++i) {
        gmPtrHandle<T> tiny;
        loading || tiny;
        EXPECT_FALSE(tiny.isNull());
    }
}

TEST(ArchiveLimits, ReferencesAreNoObjects) {
    std::ostringstream out;
    gmArchive archive(out);
    archive.maxObjectsPerByte(1.0 / 26.0);
    NodeHandle one(new Node(1));
    for (int i = 0; i < 10; ++i)
        EXPECT_NO_THROW(archive || one);
}

}  // namespace
