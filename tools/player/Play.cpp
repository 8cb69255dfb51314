#include "player/Play.h"

#include "player/Match.h"
#include "player/PressCodes.h"
#include "sim/LevelRules.h"
#include "sim/Simulation.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Wirefall {

namespace {

constexpr std::size_t LineLength = 100;

void SetFast(std::uint32_t held) { SetFastForward(held != 0); }

void PassStep(std::uint32_t /*unused*/) { AdvanceSimulation(StepMs); }

void PassFrame(std::uint32_t milliseconds) { AdvanceSimulation(milliseconds); }

void TakeNextLevel(std::uint32_t /*unused*/) { AdvanceLevel(); }

void ReachTarget(std::uint32_t /*unused*/) { CompleteByDecree(); }

void Give(std::uint32_t code) { ApplyRunCommand(code); }

struct LetterRow {
    char Letter;
    bool Repeats;    // The number tells how often.
    bool PassesTime; // A step of the play ends with it.
    void (*Do)(std::uint32_t number);
    std::uint32_t Code; // What it is done with if it repeats.
};

constexpr std::array<LetterRow, 14> Letters = {{
    {'u', true, false, Give, Press::Up},
    {'d', true, false, Give, Press::Down},
    {'l', true, false, Give, Press::Left},
    {'r', true, false, Give, Press::Right},
    {'q', true, false, Give, Press::RotateLeft},
    {'e', true, false, Give, Press::RotateRight},
    {'p', true, false, Give, Press::Place},
    {'k', false, false, Give, 0},
    {'f', false, false, SetFast, 0},
    {'t', true, true, PassStep, 0},
    {'m', false, true, PassFrame, 0},
    {'n', false, false, TakeNextLevel, 0},
    {'c', false, false, ReachTarget, 0},
    {'s', false, false, StartSeededRun, 0},
}};

bool IsCommand(char letter) {
    return std::ranges::find(Letters, letter, &LetterRow::Letter) != Letters.end();
}

// Throws std::out_of_range for what is no command.
const LetterRow& RowOf(char letter) {
    const auto row = std::ranges::find(Letters, letter, &LetterRow::Letter);
    return Letters.at(static_cast<std::size_t>(row - Letters.begin()));
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

[[noreturn]] void Refuse(std::string_view before, const std::string& what) {
    const auto line = std::ranges::count(before, '\n') + 1;
    throw PlayError("line " + std::to_string(line) + ": " + what);
}

std::string TextOf(const PlayCommand& command) {
    return (command.Number == 1 ? std::string{} : std::to_string(command.Number)) + command.Letter;
}

} // namespace

std::vector<PlayCommand> ParsePlay(std::string_view text) {
    std::vector<PlayCommand> play;
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] == '#') {
            at = std::min(text.find('\n', at), text.size());
        } else if (IsBlank(text[at])) {
            ++at;
        } else {
            PlayCommand command;
            if (IsDigit(text[at])) {
                const auto [end, error] =
                    std::from_chars(text.data() + at, text.data() + text.size(), command.Number);
                if (error != std::errc{}) {
                    Refuse(text.substr(0, at), "the number is too large");
                }
                at = static_cast<std::size_t>(end - text.data());
            }
            if (at == text.size() || !IsCommand(text[at])) {
                Refuse(text.substr(0, at), at == text.size()
                                               ? "the command is missing"
                                               : std::string{"'"} + text[at] + "' is no command");
            }
            command.Letter = text[at++];
            play.push_back(command);
        }
    }
    return play;
}

std::string FormatPlay(const std::vector<PlayCommand>& play) {
    std::string text;
    std::size_t lineStart = 0;
    const auto endLine = [&] {
        text += '\n';
        lineStart = text.size();
    };
    for (const PlayCommand& command : play) {
        const std::string word = TextOf(command);
        if (text.size() + word.size() - lineStart > LineLength) {
            endLine();
        }
        text += word;
        const bool played = &command != &play.front() && (&command)[-1].Letter != 'c';
        if (command.Letter == 'n' && played) {
            endLine();
        }
    }
    if (text.size() > lineStart) {
        endLine();
    }
    return text;
}

void PlayWriter::Add(char letter, std::uint32_t number) {
    if (RowOf(letter).Repeats && !Commands.empty() && Commands.back().Letter == letter) {
        Commands.back().Number += number;
    } else {
        Commands.push_back({letter, number});
    }
}

void PlayWriter::AddPress(std::uint32_t code) {
    const auto row = std::ranges::find_if(Letters, [code](const LetterRow& letter) {
        return letter.Repeats && !letter.PassesTime && letter.Code == code;
    });
    if (row == Letters.end()) {
        Add('k', code);
    } else {
        Add(row->Letter);
    }
}

PlayReader::PlayReader(const std::vector<PlayCommand>& play) : Commands(&play) {
    LiveSimulation() = Simulation{};
}

bool PlayReader::RunStep() {
    while (Next < Commands->size()) {
        const PlayCommand& command = (*Commands)[Next];
        const LetterRow& row = RowOf(command.Letter);
        const std::uint32_t times = row.Repeats ? command.Number : 1;
        if (Done == times) {
            ++Next;
            Done = 0;
            continue;
        }
        ++Done;
        row.Do(row.Repeats ? row.Code : command.Number);
        if (row.PassesTime) {
            return true;
        }
    }
    return false;
}

} // namespace Wirefall
