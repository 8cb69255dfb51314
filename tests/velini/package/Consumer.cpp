#include <velini/VelINIStream.h>

int main() {
    int unused; // a warning that only the author of this program has a say in
    velINI::velINIStream document;
    document.SetValue("Section", "key", "value", false);
    const bool written = document.WriteFile("consumer.ini", true, velINI::TextEncoding::None);
    velINI::velINIStream again;
    const bool read = again.ReadFile("consumer.ini");
    return written && read && again.GetValue("Section", "key", "") == "value" ? 0 : 1;
}
