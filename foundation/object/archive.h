#pragma once

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "foundation/export.h"

class gmPersistent;
template <int N>
class gmVector;

/// A stream of objects that is either storing or loading. One statement serves both ways: `archive || value`
/// writes the value or overwrites it with what it reads.
///
/// Bytes: little-endian, fixed width, IEEE doubles; "MOKA" and a format number come first, when the archive is
/// made. `long` and `unsigned long` take 32 bits, and a value that does not fit is refused, never cut.
///
/// Passes: the outermost `archive || object` is one pass. Within it an object is archived once as a part, and not again
/// where it came behind a pointer before: loading, such a part has to be the object that the pointer gave. Objects are
/// told apart by where they are, and stay there until the pass ends. What a storing pass wrote reaches the stream when
/// the pass has succeeded with all its parts, and not a byte of it otherwise; where the device then takes only a part
/// of it, the archive takes nothing more. Objects stored through pointers that handles hold are known for as long as
/// the archive lives, and later passes refer to them; any other is known for its pass only.
///
/// Nothing read is trusted: lengths are checked before memory is taken, nesting is bounded, no object contains
/// itself, and every refusal is one of the errors below. Objects made while loading belong to the archive until
/// a handle takes them. After the load of an object was refused, the archive reads nothing more.
///
/// One archive belongs to one thread at a time. Throws: each operation may throw what is listed under Errors.
class MOKSTD_API gmArchive {
  public:
    /// Base of the errors of archives; also what a stream that takes no more bytes raises.
    class Errors;
    /// A version byte that the reader does not accept.
    class UnknownVersion;
    /// The stream ends before the content does.
    class Truncated;
    /// Bytes that no archive holds.
    class Malformed;
    /// A class that is not registered, named by the archive or to be stored.
    class UnknownClass;
    /// A number, a length or a nesting that the format does not hold.
    class OutOfRange;

    /// An archive that stores into, or loads from, a binary stream, which must outlive it.
    explicit gmArchive(std::ostream& out);
    explicit gmArchive(std::istream& in);
    gmArchive(const gmArchive&) = delete;
    gmArchive& operator=(const gmArchive&) = delete;
    ~gmArchive();

    bool isStoring() const;

    /// Limits of what an archive may hold. Storing refuses what loading would, both with OutOfRange.
    ///
    /// How deep objects may contain each other through pointers; 256 unless set. Every level takes stack, here and in
    /// whatever walks through the objects later.
    unsigned maxDepth() const;
    void maxDepth(unsigned depth);
    /// How many objects there may be behind pointers for every byte so far; 0.1 unless set, which no class with a
    /// version byte exceeds. Few bytes stand for a large object: a lower limit keeps the memory that an archive from
    /// elsewhere can take closer to its size. Lists take no more than a few times what they take in the archive.
    double maxObjectsPerByte() const;
    /// Throws: OutOfRange for a number that is negative or NaN.
    void maxObjectsPerByte(double objects);

    gmArchive& operator||(bool& value);
    gmArchive& operator||(long& value);
    gmArchive& operator||(unsigned long& value);

    /// Loading: how many of `count` elements of at least `bytesEach` bytes to make room for at once. All of
    /// them where the rest of the stream can be measured and holds that many; a modest number where it cannot be
    /// measured. Throws: Truncated when that many cannot follow.
    std::size_t roomFor(unsigned long count, std::size_t bytesEach) const;

    /// While it lives, keeps what its elements take of the rest from lists that are read within them. The elements take
    /// their share with take().
    class MOKSTD_API Promise {
      public:
        Promise(gmArchive& archive, unsigned long count, std::size_t bytesEach);
        Promise(const Promise&) = delete;
        Promise& operator=(const Promise&) = delete;
        ~Promise() { promised_ = before_; }
        void take() { promised_ -= bytesEach_; }

      private:
        std::uint64_t& promised_;
        std::uint64_t before_;
        std::size_t bytesEach_;
    };

    /// Says that the objects in these bytes of memory stand elsewhere now, and were visited there.
    void relocate(std::uintptr_t from, std::size_t bytes, const void* to);

  private:
    friend class gmPersistent;
    friend MOKSTD_API gmArchive& operator||(gmArchive&, unsigned char&);
    friend MOKSTD_API gmArchive& operator||(gmArchive&, unsigned short&);
    friend MOKSTD_API gmArchive& operator||(gmArchive&, double&);
    friend MOKSTD_API gmArchive& operator||(gmArchive&, std::string&);
    friend MOKSTD_API gmArchive& operator||(gmArchive&, gmPersistent&);
    friend MOKSTD_API gmArchive& archiveVector(gmArchive&, std::vector<gmVector<2>>&, std::size_t);

    struct State;
    class Pass;
    class Part;
    class Content;
    std::unique_ptr<State> state_;

    std::size_t roomBeside(std::uint64_t promised, unsigned long count, std::size_t bytesEach) const;
    void storeBytes(const unsigned char* bytes, std::size_t count);
    void loadBytes(unsigned char* bytes, std::size_t count);
    void storeVertices(const std::vector<gmVector<2>>& vertices);
    std::size_t loadVertices(gmVector<2>* first, std::size_t count);
    template <class Unsigned>
    void archiveUnsigned(Unsigned& value);
    void storePointer(gmPersistent* object);
    gmPersistent* loadPointer();
};

/// One byte.
MOKSTD_API gmArchive& operator||(gmArchive& archive, unsigned char& value);
/// Two bytes.
MOKSTD_API gmArchive& operator||(gmArchive& archive, unsigned short& value);
/// Eight bytes, any bit pattern.
MOKSTD_API gmArchive& operator||(gmArchive& archive, double& value);
/// A 32-bit length and that many bytes.
MOKSTD_API gmArchive& operator||(gmArchive& archive, std::string& value);
/// x, then y.
MOKSTD_API gmArchive& operator||(gmArchive& archive, gmVector<2>& value);
/// The content of the object, by its class's own layout.
MOKSTD_API gmArchive& operator||(gmArchive& archive, gmPersistent& object);

/// A number of elements and the elements, each of at least `bytesEach` bytes. Loading makes the vector as long as
/// the number says and reads the elements in place: when one is refused, those before it stay read. Where the rest
/// of the stream cannot be measured, the vector grows as the elements come.
template <class T>
gmArchive& archiveVector(gmArchive& archive, std::vector<T>& elements, std::size_t bytesEach) {
    unsigned long count = elements.size();
    archive || count;
    if (!archive.isStoring())
        elements.resize(archive.roomFor(count, bytesEach));
    gmArchive::Promise promise(archive, count, bytesEach);
    for (unsigned long i = 0; i < count; ++i) {
        promise.take();
        if (i == elements.size()) {
            const auto before = reinterpret_cast<std::uintptr_t>(elements.data());
            elements.resize(i + 1 + archive.roomFor(count - i - 1, bytesEach));
            archive.relocate(before, i * sizeof(T), elements.data());
        }
        archive || elements[i];
    }
    return archive;
}

/// The same for vertices, many at once.
MOKSTD_API gmArchive& archiveVector(gmArchive& archive, std::vector<gmVector<2>>& vertices, std::size_t bytesEach);
