#include <velini/VelINIStream.h>

extern "C" int CountSections(const char* text);

int CountSections(const char* text) {
    velINI::velINIStream document;
    document.ReadText(text);
    return static_cast<int>(document.SectionCount());
}
