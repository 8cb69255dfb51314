#include "velini/Commands.h"

#include <exception>
#include <iostream>
#include <string>
#include <vector>

int main(int count, char** words) {
    try {
        const std::vector<std::string> arguments(words + (count > 0 ? 1 : 0), words + count);
        return static_cast<int>(velINI::Tool::Run(arguments, std::cout, std::cerr));
    } catch (const std::exception& error) {
        std::cerr << "velini: " << error.what() << '\n';
        return static_cast<int>(velINI::Tool::ExitStatus::Failed);
    }
}
