// Writes the inputs from which the settings file's fuzz target starts.
#include <span>
#include <string>
#include <string_view>

#include "fuzz/seeds/Seeds.h"

namespace {

void Write(const std::string& folder, const std::string& name, std::string_view text) {
    ostrevin::fuzz::WriteSeed(folder, name, std::as_bytes(std::span(text)));
}

void WriteSeeds(const std::string& folder) {
    Write(folder, "empty", "");
    Write(folder, "usual", "ShowPreview=True\r\n");
    Write(folder, "sections", "a=1\n\n[View]\nShowPreview=True\n[]\nb=2\n[View]\nc=3=4\n");
    Write(folder, "comments", "#one\r\n'two\r\na=1\r\n#four\r\n\r\n[S]\r\n#six\r\nb=2\r\n'eight");
    Write(folder, "dropped", "junk\r[Empty]\r#kept\r[S]\rjunk\rx=1\r");
    Write(folder, "brackets", "[a=b]\n[c=d\n[]\n[\n]\n[[e]]\n=\n[x]y=z\n");
}

}  // namespace

int main(int argumentCount, char** arguments) {
    return ostrevin::fuzz::SeedsMain(argumentCount, arguments, WriteSeeds);
}
