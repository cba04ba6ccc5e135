// What the programs that write seeds share.
#pragma once

#include <cstddef>
#include <exception>
#include <fstream>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>

namespace ostrevin::fuzz {

/// Writes one seed. Throws std::runtime_error when it cannot.
inline void WriteSeed(const std::string& folder, const std::string& name, std::span<const std::byte> bytes) {
    std::ofstream file(folder + "/" + name, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + folder + "/" + name);
    }
}

/// The main function of a program that writes its seeds to the folder of its argument.
template <typename WriteSeeds>
int SeedsMain(int argumentCount, char** arguments, WriteSeeds writeSeeds) {
    if (argumentCount != 2) {
        std::cerr << "usage: " << arguments[0] << " FOLDER\n";
        return 2;
    }
    try {
        writeSeeds(std::string(arguments[1]));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << "\n";
        return 1;
    }
}

}  // namespace ostrevin::fuzz
