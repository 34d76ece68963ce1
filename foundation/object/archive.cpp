#include "foundation/object/archive.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <istream>
#include <limits>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

#include "foundation/math/vector.h"
#include "foundation/object/exception.h"
#include "foundation/object/instantiator.h"

namespace {

constexpr unsigned char magic[] = {'M', 'O', 'K', 'A', 1};

// Room made without knowing that the stream goes on that far: enough for most, little to lose.
constexpr std::size_t blindRoom = 4096;

constexpr std::size_t vertexBytes = 2 * sizeof(double);

// Vertices that pass in one go.
constexpr std::size_t verticesAtOnce = 256;

// By address and size.
using Marks = std::set<std::pair<std::uintptr_t, std::uint64_t>>;

std::uintptr_t addressOf(const void* object) {
    return reinterpret_cast<std::uintptr_t>(object);
}

// Marks of the pass that runs on this thread.
thread_local Marks* currentMarks = nullptr;

// A double in an archive has its lowest byte first.
std::uint64_t lowestByteFirst(std::uint64_t bits) {
    return __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? bits : __builtin_bswap64(bits);
}

void storeDouble(double value, unsigned char* bytes) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    bits = lowestByteFirst(bits);
    std::memcpy(bytes, &bits, sizeof bits);
}

double loadDouble(const unsigned char* bytes) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, bytes, sizeof bits);
    bits = lowestByteFirst(bits);
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// The answer of a stream's buffer; false where it fails as the standard's buffers do.
template <class Question>
bool asked(Question question) {
    try {
        return question();
    } catch (const std::ios_base::failure&) {
        return false;
    }
}

// How many bytes the stream still holds, where that can be asked.
std::optional<std::uint64_t> restOf(std::istream& in) try {
    std::streambuf& buffer = *in.rdbuf();
    const std::streamoff here = buffer.pubseekoff(0, std::ios_base::cur, std::ios_base::in);
    if (here < 0)
        return {};
    const std::streamoff end = buffer.pubseekoff(0, std::ios_base::end, std::ios_base::in);
    buffer.pubseekoff(here, std::ios_base::beg, std::ios_base::in);
    if (end < here)
        return {};
    return static_cast<std::uint64_t>(end - here);
} catch (const std::ios_base::failure&) {
    return {};
}

}  // namespace

struct gmArchive::State {
    struct Stored {
        std::uint32_t number;
        bool open;                               // its content is being written
        gmPtrHandle_const<gmRepBase> keptAlive;  // so that no other object takes its address
    };
    struct Loaded {
        gmPersistent* object;
        bool open;
        gmPtrHandle<gmRepBase> counted;           // owner of an object that handles count
        std::unique_ptr<gmPersistent> uncounted;  // owner of any other
    };

    std::ostream* out = nullptr;
    std::istream* in = nullptr;
    std::string pending;                // what the storing pass wrote so far
    std::optional<std::uint64_t> rest;  // what the stream can still yield, where known
    unsigned maxDepth = 256;
    double maxObjectsPerByte = 0.1;
    unsigned depth = 0;
    std::uint64_t position = 0;  // bytes so far
    bool failed = false;
    Marks* marks = nullptr;  // of the pass that runs, null outside passes
    std::uint32_t storedCount = 0;
    std::uint64_t promised = 0;  // of the rest, to the lists that are being read
    bool tornPart = false;       // whether what the running pass wrote lacks a piece
    std::map<const gmPersistent*, Stored> stored;
    std::vector<const gmPersistent*> storedNow;  // those that the running pass added
    std::vector<const gmPersistent*> inPlace;    // objects that pass as parts, those that contain others first
    std::vector<Loaded> loaded;

    bool isInPlace(const gmPersistent* object) const {
        return std::find(inPlace.begin(), inPlace.end(), object) != inPlace.end();
    }

    void checkUsable() const {
        if (failed)
            throw Errors("archive was refused before");
    }

    /// One more object begins behind a pointer.
    void checkLimits() const {
        if (depth >= maxDepth)
            throw OutOfRange("objects are nested too deeply");
        const auto objects = static_cast<double>(out ? storedCount : loaded.size());
        if (objects + 1.0 > maxObjectsPerByte * static_cast<double>(position))
            throw OutOfRange("too many objects for so few bytes");
    }

    void flush() {
        const std::string bytes = std::exchange(pending, {});
        failed = true;  // unless all goes well: a device may have taken a part, which nothing can follow
        // Through to the device, so that a full disk is an error here and not silence when the stream is closed.
        if (out->fail() || !asked([&] {
                const auto size = static_cast<std::streamsize>(bytes.size());
                return out->rdbuf()->sputn(bytes.data(), size) == size && out->rdbuf()->pubsync() == 0;
            }))
            throw Errors("archive could not be written");
        failed = false;
    }
};

/// One `archive || object`: the outermost one of an archive is the pass, those within it belong to it.
class gmArchive::Pass {
  public:
    explicit Pass(State& state)
        : state_(state),
          outer_(std::exchange(currentMarks, state.marks)),
          isPass_(!state.marks),
          first_(state.storedCount) {
        if (isPass_)
            state_.marks = currentMarks = &marks_;
    }
    Pass(const Pass&) = delete;
    Pass& operator=(const Pass&) = delete;

    void succeeded() {
        if (isPass_ && state_.out) {
            if (state_.tornPart)
                throw Errors("a part of it was refused");
            state_.flush();
        }
        done_ = true;
    }

    ~Pass() {
        currentMarks = outer_;
        if (!done_ && state_.in)
            state_.failed = true;
        if (!isPass_) {
            state_.tornPart = state_.tornPart || !done_;
            return;
        }
        state_.tornPart = false;
        state_.marks = nullptr;
        state_.position -= state_.pending.size();
        state_.pending.clear();
        // Objects of a pass that failed were never written. Those that nobody counts may be gone before the
        // next pass, and another one live at their address.
        for (const gmPersistent* object : std::exchange(state_.storedNow, {})) {
            const auto entry = state_.stored.find(object);
            if (entry != state_.stored.end() && (!done_ || entry->second.keptAlive.isNull()))
                state_.stored.erase(entry);
        }
        if (!done_)
            state_.storedCount = first_;
    }

  private:
    State& state_;
    Marks* outer_;
    Marks marks_;
    bool isPass_;
    bool done_ = false;
    std::uint32_t first_;
};

/// An object that passes as a part: until it is through, it contains what comes.
class gmArchive::Part {
  public:
    Part(State& state, const gmPersistent& object) : state_(state) { state_.inPlace.push_back(&object); }
    Part(const Part&) = delete;
    Part& operator=(const Part&) = delete;
    ~Part() { state_.inPlace.pop_back(); }

  private:
    State& state_;
};

/// The content of an object that a pointer leads to, while it passes through the archive. The loader makes a new
/// object for it, so that what was met before, as a part of another object, has to be stored all the same.
class gmArchive::Content {
  public:
    explicit Content(State& state) : state_(state), outer_(state.marks) {
        state_.marks = currentMarks = &marks_;
        ++state_.depth;
    }
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;
    ~Content() {
        --state_.depth;
        outer_->merge(marks_);
        state_.marks = currentMarks = outer_;
    }

  private:
    State& state_;
    Marks* outer_;
    Marks marks_;
};

gmArchive::gmArchive(std::ostream& out) : state_(std::make_unique<State>()) {
    state_->out = &out;
    storeBytes(magic, sizeof magic);
}

gmArchive::gmArchive(std::istream& in) : state_(std::make_unique<State>()) {
    state_->in = &in;
    if (in.rdbuf())
        state_->rest = restOf(in);
    unsigned char start[sizeof magic];
    loadBytes(start, sizeof start);
    if (!std::equal(std::begin(start), std::end(start), std::begin(magic)))
        throw Malformed("not an archive");
}

gmArchive::~gmArchive() = default;

bool gmArchive::isStoring() const {
    return state_->out != nullptr;
}

unsigned gmArchive::maxDepth() const {
    return state_->maxDepth;
}

void gmArchive::maxDepth(unsigned depth) {
    state_->maxDepth = depth;
}

double gmArchive::maxObjectsPerByte() const {
    return state_->maxObjectsPerByte;
}

void gmArchive::maxObjectsPerByte(double objects) {
    if (!(objects >= 0.0))
        throw OutOfRange("no such number of objects");
    state_->maxObjectsPerByte = objects;
}

void gmArchive::storeBytes(const unsigned char* bytes, std::size_t count) {
    state_->checkUsable();
    state_->pending.append(reinterpret_cast<const char*>(bytes), count);
    state_->position += count;
    if (!state_->marks)
        state_->flush();
}

void gmArchive::loadBytes(unsigned char* bytes, std::size_t count) {
    State& state = *state_;
    state.checkUsable();
    state.failed = true;  // unless all goes well
    std::streamsize read = 0;
    if (state.in->rdbuf() && !asked([&] {
            read = state.in->rdbuf()->sgetn(reinterpret_cast<char*>(bytes), static_cast<std::streamsize>(count));
            return true;
        }))
        throw Errors("archive could not be read");
    if (read != static_cast<std::streamsize>(count))
        throw Truncated();
    state.failed = false;
    state.position += count;
    if (state.rest)
        *state.rest -= std::min<std::uint64_t>(*state.rest, count);
}

std::size_t gmArchive::roomFor(unsigned long count, std::size_t bytesEach) const {
    return roomBeside(state_->promised, count, bytesEach);
}

std::size_t gmArchive::roomBeside(std::uint64_t promised, unsigned long count, std::size_t bytesEach) const {
    const std::size_t size = std::max<std::size_t>(bytesEach, 1);
    const auto most = [&] { return (*state_->rest - std::min(*state_->rest, promised)) / size; };
    // A stream may have grown since it was measured.
    if (state_->rest && count > most())
        state_->rest = restOf(*state_->in);
    if (!state_->rest)
        return std::min<std::size_t>(count, blindRoom);
    if (count > most())
        throw Truncated();
    return count;
}

gmArchive::Promise::Promise(gmArchive& archive, unsigned long count, std::size_t bytesEach)
    : promised_(archive.state_->promised), before_(promised_), bytesEach_(bytesEach) {
    promised_ += count * bytesEach_;
}

void gmArchive::relocate(std::uintptr_t from, std::size_t bytes, const void* to) {
    if (!currentMarks)
        return;
    const auto begin = currentMarks->lower_bound({from, 0});
    const auto end = currentMarks->lower_bound({from + bytes, 0});
    const std::vector<Marks::value_type> moved(begin, end);
    currentMarks->erase(begin, end);
    for (const auto& [address, size] : moved)
        currentMarks->emplace(addressOf(to) + (address - from), size);
}

void gmArchive::storeVertices(const std::vector<gmVector<2>>& vertices) {
    state_->pending.reserve(state_->pending.size() + vertices.size() * vertexBytes);
    std::array<unsigned char, verticesAtOnce * vertexBytes> bytes;
    for (std::size_t begin = 0; begin < vertices.size(); begin += verticesAtOnce) {
        const std::size_t count = std::min(verticesAtOnce, vertices.size() - begin);
        for (std::size_t i = 0; i < count; ++i) {
            const gmVector<2>& vertex = vertices[begin + i];
            storeDouble(vertex.x(), &bytes[i * vertexBytes]);
            storeDouble(vertex.y(), &bytes[i * vertexBytes + sizeof(double)]);
        }
        storeBytes(bytes.data(), count * vertexBytes);
    }
}

/// Loads some of the vertices, at least one. How many.
std::size_t gmArchive::loadVertices(gmVector<2>* first, std::size_t count) {
    // No more than the stream's buffer says it has: so that nothing is lost of what comes before an error.
    std::streamsize available = 0;
    if (state_->in->rdbuf() && !asked([&] {
            available = state_->in->rdbuf()->in_avail();
            return true;
        }))
        available = 0;
    const std::size_t whole = available > 0 ? static_cast<std::size_t>(available) / vertexBytes : 0;
    const std::size_t loaded = std::min({count, whole, verticesAtOnce});
    if (loaded == 0) {
        *this || *first;
        return 1;
    }
    std::array<unsigned char, verticesAtOnce * vertexBytes> bytes;
    loadBytes(bytes.data(), loaded * vertexBytes);
    for (std::size_t i = 0; i < loaded; ++i)
        first[i] =
            gmVector<2>(loadDouble(&bytes[i * vertexBytes]), loadDouble(&bytes[i * vertexBytes + sizeof(double)]));
    return loaded;
}

gmArchive& archiveVector(gmArchive& archive, std::vector<gmVector<2>>& vertices, std::size_t bytesEach) {
    unsigned long count = vertices.size();
    archive || count;
    if (archive.isStoring()) {
        archive.storeVertices(vertices);
        return archive;
    }
    vertices.resize(archive.roomFor(count, bytesEach));
    for (std::size_t read = 0; read < count; read += archive.loadVertices(&vertices[read], vertices.size() - read))
        if (read == vertices.size())
            vertices.resize(read + 1 + archive.roomFor(count - read - 1, bytesEach));
    return archive;
}

template <class Unsigned>
void gmArchive::archiveUnsigned(Unsigned& value) {
    unsigned char bytes[sizeof value];
    if (isStoring()) {
        for (std::size_t i = 0; i < sizeof value; ++i)
            bytes[i] = static_cast<unsigned char>(value >> (8 * i));
        storeBytes(bytes, sizeof value);
    } else {
        loadBytes(bytes, sizeof value);
        std::uint64_t read = 0;
        for (std::size_t i = 0; i < sizeof value; ++i)
            read |= static_cast<std::uint64_t>(bytes[i]) << (8 * i);
        value = static_cast<Unsigned>(read);
    }
}

gmArchive& gmArchive::operator||(bool& value) {
    std::uint8_t byte = value;
    archiveUnsigned(byte);
    if (byte > 1)
        throw Malformed("a truth value is neither 0 nor 1");
    value = byte == 1;
    return *this;
}

gmArchive& gmArchive::operator||(long& value) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (isStoring() && (value < Limits::min() || value > Limits::max()))
        throw OutOfRange("a number does not fit in 32 bits");
    auto bits = static_cast<std::uint32_t>(value);
    archiveUnsigned(bits);
    value = static_cast<std::int32_t>(bits);
    return *this;
}

gmArchive& gmArchive::operator||(unsigned long& value) {
    if (isStoring() && value > std::numeric_limits<std::uint32_t>::max())
        throw OutOfRange("a number does not fit in 32 bits");
    auto bits = static_cast<std::uint32_t>(value);
    archiveUnsigned(bits);
    value = bits;
    return *this;
}

gmArchive& operator||(gmArchive& archive, unsigned char& value) {
    archive.archiveUnsigned(value);
    return archive;
}

gmArchive& operator||(gmArchive& archive, unsigned short& value) {
    archive.archiveUnsigned(value);
    return archive;
}

gmArchive& operator||(gmArchive& archive, double& value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    archive.archiveUnsigned(bits);
    std::memcpy(&value, &bits, sizeof bits);
    return archive;
}

gmArchive& operator||(gmArchive& archive, std::string& value) {
    unsigned long length = value.size();
    archive || length;
    if (archive.isStoring()) {
        archive.storeBytes(reinterpret_cast<const unsigned char*>(value.data()), length);
        return archive;
    }
    std::string read;
    while (read.size() < length) {
        const std::size_t start = read.size();
        const std::size_t step = archive.roomBeside(0, length - start, 1);  // it is read at once
        read.resize(start + step);
        archive.loadBytes(reinterpret_cast<unsigned char*>(read.data() + start), step);
    }
    value = std::move(read);
    return archive;
}

gmArchive& operator||(gmArchive& archive, gmVector<2>& value) {
    double x = value.x();
    double y = value.y();
    archive || x;
    archive || y;
    value = gmVector<2>(x, y);
    return archive;
}

gmArchive& operator||(gmArchive& archive, gmPersistent& object) {
    gmArchive::Pass pass(*archive.state_);
    {
        const gmArchive::Part part(*archive.state_, object);
        object.dispatchSerialize(archive);
    }
    pass.succeeded();
    return archive;
}

bool gmPersistent::haveVisited(void* object, std::uint64_t size) {
    return currentMarks && currentMarks->count({addressOf(object), size}) != 0;
}

void gmPersistent::setVisited(void* object, std::uint64_t size) {
    if (currentMarks)
        currentMarks->emplace(addressOf(object), size);
}

void gmPersistent::serializePointer(gmArchive& archive, gmPersistent* stored, gmPersistent*& loaded) {
    gmArchive::Pass pass(*archive.state_);
    if (archive.isStoring())
        archive.storePointer(stored);
    else
        loaded = archive.loadPointer();
    pass.succeeded();
}

// A pointer is a number: 0 for null, an earlier object's number for that object, or the next unused number,
// which the name of the class and the object's content follow.

void gmArchive::storePointer(gmPersistent* object) {
    State& state = *state_;
    const auto found = state.stored.find(object);
    std::uint32_t number = 0;
    if (found != state.stored.end()) {
        if (found->second.open || state.isInPlace(object))
            throw Malformed("an object contains itself");
        number = found->second.number;
    } else if (object) {
        number = state.storedCount + 1;
    }
    archiveUnsigned(number);
    if (!object || found != state.stored.end())
        return;

    std::string name = gm_Instantiator::className(typeid(*object));
    if (!gm_Instantiator::isRegistered(name))
        throw UnknownClass("class " + name + " is not registered");
    *this || name;
    state.checkLimits();
    // An object without handles lives elsewhere, on the stack perhaps: counting it would destroy it.
    const auto* counted = dynamic_cast<const gmRepBase*>(object);
    const bool shared = counted && counted->referenceCount() > 0;
    state.storedNow.push_back(object);
    State::Stored& entry = state.stored[object];
    entry.number = ++state.storedCount;
    entry.open = true;
    entry.keptAlive = gmPtrHandle_const<gmRepBase>(shared ? counted : nullptr);
    {
        const Content content(state);
        object->dispatchSerialize(*this);
    }
    entry.open = false;
}

gmPersistent* gmArchive::loadPointer() {
    State& state = *state_;
    std::uint32_t number = 0;
    archiveUnsigned(number);
    if (number == 0)
        return nullptr;
    if (number <= state.loaded.size()) {
        const State::Loaded& entry = state.loaded[number - 1];
        if (entry.open || state.isInPlace(entry.object))
            throw Malformed("an object contains itself");
        return entry.object;
    }
    if (number != state.loaded.size() + 1)
        throw Malformed("a reference to an object that was not read");

    std::string name;
    *this || name;
    state.checkLimits();
    std::unique_ptr<gmPersistent> made(gm_Instantiator::make(name));
    if (!made)
        throw UnknownClass("class " + name + " is not registered");
    gmPersistent* const object = made.get();
    state.loaded.push_back({object, true, {}, std::move(made)});
    if (auto* counted = dynamic_cast<gmRepBase*>(object)) {
        static_cast<void>(state.loaded.back().uncounted.release());
        state.loaded.back().counted = gmPtrHandle<gmRepBase>(counted);
    }
    {
        const Content content(state);
        object->dispatchSerialize(*this);
    }
    object->reInit();
    state.loaded[number - 1].open = false;
    return object;
}
