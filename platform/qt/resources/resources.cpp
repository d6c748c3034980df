#include "resources/resources.h"

#include "base/text.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <map>

// The compiled resources, linked into the program.
extern "C" {
extern const unsigned char pelmora_resources_begin[];
extern const unsigned char pelmora_resources_end[];
}

namespace platform {

const ResourceFile& program_resources() {
    static const ResourceFile file(
        Bytes(pelmora_resources_begin,
              static_cast<std::size_t>(pelmora_resources_end - pelmora_resources_begin)));
    return file;
}

std::uint16_t resource_id(LPCSTR name) {
    const auto number = reinterpret_cast<std::uintptr_t>(name);
    return number <= 0xFFFF ? static_cast<std::uint16_t>(number) : std::uint16_t{0};
}

void resource_fault(const char* kind, unsigned id) {
    std::fprintf(stderr, "fatal - %s %u cannot be read\n", kind, id);
    std::exit(2);
}

const std::vector<Accelerator>* accelerators_of(HACCEL handle) {
    return reinterpret_cast<const std::vector<Accelerator>*>(handle);
}

} // namespace platform

using namespace platform;

int LoadStringA(HINSTANCE, UINT id, LPSTR buffer, int size) {
    if (id > 0xFFFF) {
        return 0;
    }
    const QByteArray text =
        to_qstring(read_string(program_resources(), static_cast<std::uint16_t>(id))).toUtf8();
    return static_cast<int>(copy_text(text, buffer, size));
}

HACCEL LoadAcceleratorsA(HINSTANCE, LPCSTR name) {
    static std::map<std::uint16_t, std::vector<Accelerator>> loaded;
    const std::uint16_t id = resource_id(name);
    const auto known = loaded.find(id);
    if (known != loaded.end()) {
        return reinterpret_cast<HACCEL>(&known->second);
    }
    auto table = read_accelerators(program_resources().find(ResourceType::accelerators, id));
    if (!table) {
        return nullptr;
    }
    return reinterpret_cast<HACCEL>(&loaded.emplace(id, std::move(*table)).first->second);
}
