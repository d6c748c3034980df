// Heap copies of texts.
#pragma once

#include <cstdlib>
#include <memory>

namespace pelmora {

// Owner of a text that was made with malloc().
struct FreeText {
    void operator()(char* text) const { std::free(text); }
};
using OwnedText = std::unique_ptr<char[], FreeText>;

// A copy of `text`; null for null and when memory runs out. The caller releases it with free().
char* StrDup(const char* text);

// `first` followed by `second`, a null one counting as empty; null when memory runs out. The caller
// releases it with free().
char* StrJoin(const char* first, const char* second);

} // namespace pelmora
