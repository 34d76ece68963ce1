#include "foundation/object/instantiator.h"

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>
#include <typeindex>

namespace {

struct Entry {
    const gm_Instantiator* owner;
    gmPersistent* (*make)();
};

// Never destroyed: static objects of other libraries register and unregister whenever they come and go. A class may
// be registered by several of them: the oldest registration that is left makes the objects.
std::multimap<std::string, Entry>& registry() {
    static auto& entries = *new std::multimap<std::string, Entry>;
    return entries;
}

std::string demangled(const char* name) {
    int status = 0;
    const std::unique_ptr<char, void (*)(void*)> text(abi::__cxa_demangle(name, nullptr, nullptr, &status), std::free);
    return text ? text.get() : name;
}

}  // namespace

gm_Instantiator::gm_Instantiator(const std::type_info& type, gmPersistent* (*factory)()) : name_(className(type)) {
    registry().emplace(name_, Entry{this, factory});
}

gm_Instantiator::~gm_Instantiator() {
    const auto [first, last] = registry().equal_range(name_);
    const auto own = std::find_if(first, last, [this](const auto& entry) { return entry.second.owner == this; });
    if (own != last)
        registry().erase(own);
}

gmPersistent* gm_Instantiator::make(const std::string& className) {
    const auto [first, last] = registry().equal_range(className);
    return first == last ? nullptr : first->second.make();
}

bool gm_Instantiator::isRegistered(const std::string& className) {
    return registry().count(className) != 0;
}

const std::string& gm_Instantiator::className(const std::type_info& type) {
    // Exceptions ask for their name on any thread, and std::exception::what needs it to stay.
    static auto& mutex = *new std::mutex;
    static auto& names = *new std::map<std::type_index, std::string>;
    const std::lock_guard<std::mutex> lock(mutex);
    const auto found = names.find(type);
    return found != names.end() ? found->second : names.emplace(type, demangled(type.name())).first->second;
}
