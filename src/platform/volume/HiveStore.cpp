#include "platform/volume/HiveStore.h"

#include <algorithm>
#include <array>
#include <new>
#include <utility>
#include <vector>

#include "platform/volume/VolumeFiles.h"

namespace ostrevin {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::size_t kFieldsOfBaseBlock = 512;
constexpr char kUnreadable[] = "The registry hive cannot be opened for reading.";

bool HasSignature(Bytes file) {
    constexpr std::array kSignature = {std::byte{'r'}, std::byte{'e'}, std::byte{'g'}, std::byte{'f'}};
    return file.size() >= kSignature.size() && std::equal(kSignature.begin(), kSignature.end(), file.begin());
}

const char* LineOf(regf::Trouble trouble) {
    return trouble == regf::Trouble::Unreadable
               ? "The registry hive cannot be read to its end."
               : "The registry hive claims to hold more than its size. Not all of it is read.";
}

/// What is to tell of a hive that was read; null when it was as it should be.
const char* LineOf(regf::Recovery recovery, bool hadDamagedBaseBlock) {
    switch (recovery) {
        case regf::Recovery::FromLogs:
            return hadDamagedBaseBlock
                       ? "The registry hive has a damaged base block and has been recovered from its logs."
                       : "The registry hive was not written out and has been recovered from its logs.";
        case regf::Recovery::DirtyNoLogs:
            return hadDamagedBaseBlock
                       ? "The registry hive has a damaged base block and no log fits it: its sound parts are "
                         "read."
                       : "The registry hive was not written out and no log fits it: it is read as it stands.";
        case regf::Recovery::None:
            break;
    }
    return nullptr;
}

}  // namespace

HiveStore::HiveStore(const VolumeFiles& files, Notice notice)
    : files_(files), openFiles_(files), notice_(std::move(notice)) {}

const regf::Hive* HiveStore::Load(const std::string& path, std::int32_t& result) {
    // A file in a folder without rights has no place on the host that could be told.
    const std::string hostPath = files_.HostPath(path).value_or(path);
    result = kSuccess;
    if (const auto known = hives_.find(hostPath); known != hives_.end()) {
        return known->second.get();
    }
    std::unique_ptr<regf::Hive> hive = Read(path, hostPath, result);
    return hive ? hives_.emplace(hostPath, std::move(hive)).first->second.get() : nullptr;
}

const regf::Hive* HiveStore::LoadRequired(const std::string& path) {
    std::int32_t result = kSuccess;
    const regf::Hive* hive = Load(path, result);
    if (result == kFileNotFound || result == kPathNotFound) {
        Tell(path, "The registry hive is missing.");
    }
    return hive;
}

bool HiveStore::IsUnreadable(const std::string& path) {
    std::int32_t result = kSuccess;
    const std::unique_ptr<InputFile> file = files_.Open(path, result);
    std::array<std::byte, 1> first{};
    const bool unreadable =
        file ? file->Size() > 0 && file->Read(0, first) < first.size() : result == kAccessDenied;
    if (unreadable) {
        Tell(files_.HostPath(path).value_or(path), kUnreadable);
    }
    return unreadable;
}

std::optional<std::uint64_t> HiveStore::LastWritten(const std::string& path) const {
    std::int32_t result = kSuccess;
    const std::unique_ptr<InputFile> file = files_.Open(path, result);
    std::array<std::byte, kFieldsOfBaseBlock> beginning{};
    if (!file || file->Read(0, beginning) != beginning.size()) {
        return std::nullopt;
    }
    return regf::Hive::LastWritten(beginning);
}

std::unique_ptr<regf::Hive> HiveStore::Read(const std::string& path, const std::string& hostPath,
                                            std::int32_t& result) {
    std::unique_ptr<InputFile> file = openFiles_.Open(path, result);
    if (!file) {
        if (result == kAccessDenied) {
            Tell(hostPath, kUnreadable);
        }
        return nullptr;
    }
    result = kBadDatabase;
    if (file->Size() > kLargestHive) {
        Tell(hostPath, "The file is too large to be a registry hive.");
        return nullptr;
    }
    std::array<std::byte, kFieldsOfBaseBlock> fields{};
    const Bytes beginning = Bytes(fields).first(file->Read(0, fields));
    const bool hasSignature = HasSignature(beginning);
    const regf::Logs logs = regf::Hive::IsDirty(beginning) ? OpenLogs(path) : regf::Logs();
    std::unique_ptr<regf::Hive> hive;
    try {
        hive = regf::Hive::Open(std::move(file), logs,
                                [this, hostPath](regf::Trouble trouble) { Tell(hostPath, LineOf(trouble)); });
    } catch (const regf::HiveError& error) {
        Tell(hostPath, error.what());
        result = hasSignature ? kBadDatabase : kNotRegistryFile;
        return nullptr;
    } catch (const std::bad_alloc&) {
        Tell(hostPath, "There is not enough memory for the registry hive.");
        return nullptr;
    }
    const char* const recovery = LineOf(hive->HowRecovered(), hive->HadDamagedBaseBlock());
    if (recovery != nullptr) {
        Tell(hostPath, recovery);
    }
    result = kSuccess;
    return hive;
}

regf::Logs HiveStore::OpenLogs(const std::string& path) const {
    const auto open = [&](const char* ending) {
        std::int32_t result = kSuccess;
        std::unique_ptr<InputFile> file = files_.Open(path + ending, result);
        return file && file->Size() <= kLargestHive ? std::move(file) : nullptr;
    };
    return {open(".LOG"), open(".LOG1"), open(".LOG2")};
}

void HiveStore::Tell(const std::string& file, const std::string& reason) {
    const std::string line = file + ": " + reason;
    if (told_.insert(line).second && notice_) {
        notice_(line);
    }
}

}  // namespace ostrevin
