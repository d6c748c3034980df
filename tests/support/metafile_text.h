// Enhanced metafiles as text for comparisons: a line for each record.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace pelmora_test {

// The records of a metafile's bytes, such as "SETMAPMODE 2", "CREATEPEN 1 width 3 color 0x0000FF",
// "SELECTOBJECT 1", "SELECTOBJECT stock 7", "MOVETOEX 0 0", "LINETO 5 0", "DELETEOBJECT 1", "EOF";
// the header as "HEADER bounds l t r b frame l t r b handles n description NAME/PICTURE". An
// error in the structure (sizes, counts) ends the list with "DAMAGED" and its place.
std::vector<std::string> metafile_lines(const std::string& bytes);

// The number at an offset of a metafile's bytes, and `count` numbers from there, as in " 1 -2".
std::int32_t metafile_number(const std::string& bytes, std::size_t offset);
std::string metafile_numbers(const std::string& bytes, std::size_t offset, int count);

} // namespace pelmora_test
