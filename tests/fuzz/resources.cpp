// The reader of compiled resources.
#include "resources/resource_reader.h"

#include <initializer_list>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace platform;
    const ResourceFile file(Bytes(data, size));
    // The ids of the program's own resources. Each entry is read as every kind.
    for (std::uint16_t id = 1; id < 160; ++id) {
        for (const ResourceType type : {ResourceType::menu, ResourceType::accelerators,
                                        ResourceType::dialog, ResourceType::string_table}) {
            const Bytes entry = file.find(type, id);
            static_cast<void>(read_menu(entry));
            static_cast<void>(read_accelerators(entry));
            static_cast<void>(read_dialog(entry));
        }
        static_cast<void>(read_string(file, id));
        for (const IconPicture& picture : read_icon(file, id)) {
            static_cast<void>(read_icon_pixels(picture));
        }
    }
    return 0;
}
