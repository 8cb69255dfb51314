#include "velini/support/SampleFiles.h"

#include <array>
#include <cstdint>
#include <random>
#include <string_view>

namespace velINI::Testing {
namespace {

constexpr std::array<std::string_view, 24> Words = {
    "audio",   "board",    "cursor", "delay",   "effect", "filter",  "Gerät",  "height",
    "input",   "joystick", "key",    "level",   "menu",   "network", "option", "player",
    "quality", "repeat",   "screen", "texture", "größe",  "volume",  "window", "zoom",
};

class FileMaker {
public:
    std::string Make(std::size_t size) {
        Text = "; Settings and texts of a made-up program.\n\nFormat = 3\n\n";
        while (Text.size() < size) {
            const bool isText = Pick(3) == 0;
            Text += '[';
            Text += isText ? "Text." : "Settings.";
            Text += std::to_string(++Sections);
            Text += "]\n";
            AddComment();
            const std::size_t keys = 10 + Pick(40);
            for (std::size_t i = 0; i < keys; ++i) {
                if (isText) {
                    AddText(i);
                } else {
                    AddSetting(i);
                }
            }
            Text += '\n';
        }
        return Text;
    }

private:
    std::size_t Pick(std::size_t choices) { return Engine() % choices; }

    void AddWords(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            Text += i == 0 ? "" : " ";
            Text += Words[Pick(Words.size())];
        }
    }

    void AddComment() {
        Text += "; ";
        AddWords(6 + Pick(8));
        Text += '\n';
    }

    void AddName(std::size_t index) {
        constexpr std::size_t PlainWords = 6;
        Text += Words[Pick(PlainWords)];
        Text += '_';
        Text += std::to_string(index);
    }

    void AddSetting(std::size_t index) {
        if (Pick(8) == 0) {
            AddComment();
        }
        AddName(index);
        Text += " = ";
        Text += std::to_string(Pick(100000));
        if (Pick(2) == 0) {
            Text += " ; ";
            AddWords(3 + Pick(4));
        }
        Text += '\n';
    }

    void AddText(std::size_t index) {
        AddName(index);
        Text += ".label = \"";
        AddWords(3 + Pick(8));
        Text += "\"\n";
    }

    std::mt19937 Engine{20240229}; // NOLINT(cert-msc51-cpp): always the same file
    std::string Text;
    std::size_t Sections = 0;
};

} // namespace

std::string MakeRealisticFile(std::size_t size) { return FileMaker().Make(size); }

std::string MakeKeys(std::size_t count) {
    std::string text = "[Section]\n";
    for (std::size_t i = 0; i < count; ++i) {
        text += "key" + std::to_string(i) + " = " + std::to_string(i) + '\n';
    }
    return text;
}

std::string MakeSections(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += "[section" + std::to_string(i) + "]\nkey = 1\n";
    }
    return text;
}

std::string MakeComments(std::size_t count) {
    std::string text = "[Section]\n";
    for (std::size_t i = 0; i < count; ++i) {
        text += "; comment\n";
    }
    return text;
}

std::string MakeBlankLines(std::size_t count) { return "[Section]\n" + std::string(count, '\n'); }

std::string MakeElements(std::size_t count) {
    std::string text = "[Section]\n";
    for (std::size_t i = 0; i < count; ++i) {
        text += "list[] = " + std::to_string(i) + '\n';
    }
    return text;
}

} // namespace velINI::Testing
