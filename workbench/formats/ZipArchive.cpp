#include "workbench/formats/ZipArchive.h"

#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

// What no workbook does: parts that unpack to so much, and to so many times what they are packed.
constexpr std::uint64_t MostUnpacked = std::uint64_t{256} << 20U;
constexpr std::uint64_t MostTimes = 200;

struct EntryCloser {
    void operator()(zip_file_t* entry) const { zip_fclose(entry); }
};

}  // namespace

ZipArchive::ZipArchive(std::string path) : File(std::move(path)) {
    int error = 0;
    Archive.reset(zip_open(File.c_str(), ZIP_RDONLY, &error));
    if (Archive == nullptr && (error == ZIP_ER_OPEN || error == ZIP_ER_NOENT)) {
        throw DataError("\"" + File + "\" can't be read: " + std::strerror(errno) + ".");
    }
    if (Archive == nullptr) {
        RefuseDamaged();
    }
}

void ZipArchive::Closer::operator()(zip* archive) const {
    zip_discard(archive);
}

bool ZipArchive::Has(const std::string& entry) const {
    return zip_name_locate(Archive.get(), entry.c_str(), ZIP_FL_NOCASE) >= 0;
}

void ZipArchive::Read(const std::string& entry, WorkMonitor& monitor,
                      const std::function<void(std::string_view piece)>& take) const {
    const zip_int64_t place = zip_name_locate(Archive.get(), entry.c_str(), ZIP_FL_NOCASE);
    const std::unique_ptr<zip_file_t, EntryCloser> opened(
        place < 0 ? nullptr : zip_fopen_index(Archive.get(), static_cast<zip_uint64_t>(place), 0));
    if (opened == nullptr) {
        if (zip_error_code_zip(zip_get_error(Archive.get())) == ZIP_ER_NOPASSWD) {
            throw DataError("\"" + File + "\" can't be read: it is protected by a password.");
        }
        RefuseDamaged();
    }
    zip_stat_t facts{};
    const bool isKnown = zip_stat_index(Archive.get(), static_cast<zip_uint64_t>(place), 0, &facts) == 0 &&
                         (facts.valid & ZIP_STAT_COMP_SIZE) != 0;
    const std::uint64_t most = std::max(MostUnpacked, isKnown ? facts.comp_size * MostTimes : 0);
    std::uint64_t unpacked = 0;
    std::string room(std::size_t{64} * 1024, '\0');
    while (true) {
        const zip_int64_t got = zip_fread(opened.get(), room.data(), room.size());
        if (got < 0) {
            RefuseDamaged();
        }
        if (got == 0) {
            return;
        }
        unpacked += static_cast<std::uint64_t>(got);
        if (unpacked > most) {
            throw DataError("\"" + File + "\" can't be read: a part of it unpacks to more than " +
                            std::to_string(MostTimes) + " times its size, as that of no workbook does.");
        }
        take(std::string_view(room).substr(0, static_cast<std::size_t>(got)));
        monitor.Advance(static_cast<std::size_t>(got));
    }
}

void ZipArchive::RefuseDamaged() const {
    throw DataError("\"" + File + "\" can't be read; it is damaged or cut short.");
}

}  // namespace quillara
