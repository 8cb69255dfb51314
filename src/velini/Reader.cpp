#include "velini/VelINIStream.h"
#include "velini/internal/LineParser.h"
#include "velini/internal/LogicalLines.h"
#include "velini/internal/SourceText.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velINI {

bool velINIStream::ReadFile(const std::string& path) {
    std::optional<std::string> text = Internal::LoadSourceText(path);
    if (!text) {
        return false;
    }
    const std::vector<std::string_view> lines = Internal::DecodeLines(*text);
    Internal::LineParser(*this, lines).Parse();
    return true;
}

} // namespace velINI
