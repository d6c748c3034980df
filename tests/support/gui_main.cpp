// The entry point of test programs that open windows; the platform's main() calls it.
#include "platform/win32.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR command_line, int) {
    std::vector<std::string> words{"tests"};
    std::istringstream line(command_line);
    for (std::string word; line >> word;) {
        std::erase(word, '"'); // death tests start the process with quoted words
        words.push_back(word);
    }
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    int count = static_cast<int>(words.size());
    testing::InitGoogleTest(&count, arguments.data());
    return RUN_ALL_TESTS();
}
