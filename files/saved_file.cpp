#include "files/saved_file.h"

namespace pelmora {

void log_failed_save(const std::string& path, int error) {
    std::fprintf(stderr, "ERROR SAVE FILE '%s' = %d\n", path.c_str(), error);
}

SavedFile::SavedFile(const std::string& path) : path_(path), file_(path) {
    if (file_.stream() == nullptr) {
        (void)commit(); // logs why
    }
}

bool SavedFile::commit() {
    const int error = file_.commit();
    if (error != 0) {
        log_failed_save(path_, error);
    }
    return error == 0;
}

} // namespace pelmora
