// Writes the inputs from which the documents' fuzz target starts.
#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "fuzz/DocumentInput.h"
#include "fuzz/seeds/Seeds.h"
#include "tests/support/DocumentFiles.h"

namespace {

using namespace ostrevin;
using namespace ostrevin::documents;

/// A document of a kind under the name with this index.
void Write(const std::string& folder, std::size_t name, const std::string& seed, const std::string& bytes) {
    const std::string input = static_cast<char>(name) + bytes;
    fuzz::WriteSeed(folder, seed, std::as_bytes(std::span(input)));
}

void WriteSeeds(const std::string& folder) {
    for (std::size_t i = 0; i < fuzz::kDocumentNames.size(); ++i) {
        const std::string ending = std::string(fuzz::kDocumentNames.at(i)).substr(2);
        Write(folder, i, ending, Documents().at(ending));
    }
    Write(folder, 0, "jar", Jar());
    Write(folder, 0, "program", OpenXml("wordprocessingml.document", {kManifest, kClass}));
    // "<Types/>", deflated by the fixed codes.
    const std::string deflated = FromHex("B309A92C482DD6B70300");
    Write(folder, 0, "deflated", Zip({{"[Content_Types].xml", deflated, 8}, {"_rels/.rels", "<R/>"}}));
    Write(folder, 4, "deflate", deflated);
}

}  // namespace

int main(int argumentCount, char** arguments) {
    return fuzz::SeedsMain(argumentCount, arguments, WriteSeeds);
}
