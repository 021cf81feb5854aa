#include "Mv_MessageInterface.h"

#include <map>
#include <mutex>
#include <string>

Mv_MessageInterface::~Mv_MessageInterface() = default;

const Mv_MessageType* Mv_MessageType::intern(const char* name, const std::type_info& argument)
{
    // The name is copied: the caller's text may live in a plug-in that is
    // unloaded later. Never destroyed, as messages may still be sent while
    // statics are destroyed at exit.
    struct Entry
    {
        explicit Entry(const char* n) : name(n), type(name.c_str()) {}
        std::string name;
        Mv_MessageType type;
    };
    static std::mutex mutex;
    static auto* const types = new std::map<std::string, Entry>();
    const std::string key = std::string(name) + '<' + argument.name() + '>';
    const std::lock_guard<std::mutex> lock(mutex);
    auto it = types->find(key);
    if (it == types->end())
        it = types->emplace(std::piecewise_construct, std::forward_as_tuple(key), std::forward_as_tuple(name)).first;
    return &it->second.type;
}
