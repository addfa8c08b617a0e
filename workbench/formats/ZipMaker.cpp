#include "workbench/formats/ZipMaker.h"

#include <zip.h>

#include <memory>

#include "workbench/data/Errors.h"

namespace quillara {
namespace {

struct SourceFreer {
    void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using SourceOfZip = std::unique_ptr<zip_source_t, SourceFreer>;

void RequireMade(bool isMade) {
    if (!isMade) {
        throw DataError("The workbook can't be made: its archive can't be written.");
    }
}

std::string BytesOfSource(zip_source_t* source) {
    zip_stat_t status;
    RequireMade(zip_source_open(source) == 0 && zip_source_stat(source, &status) == 0);
    std::string bytes(status.size, '\0');
    const zip_int64_t got = zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    RequireMade(got >= 0 && static_cast<std::size_t>(got) == bytes.size());
    return bytes;
}

}  // namespace

std::string ZipMaker::Finish() const {
    const SourceOfZip target(zip_source_buffer_create(nullptr, 0, 0, nullptr));
    RequireMade(target != nullptr);
    zip_source_keep(target.get());  // the archive takes it
    zip_t* archive = zip_open_from_source(target.get(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (archive == nullptr) {
        zip_source_free(target.get());
    }
    RequireMade(archive != nullptr);
    bool isMade = true;
    for (const auto& [name, content] : Entries) {
        zip_source_t* source = zip_source_buffer(archive, content.data(), content.size(), 0);
        const zip_int64_t place =
            source == nullptr ? -1 : zip_file_add(archive, name.c_str(), source, ZIP_FL_ENC_UTF_8);
        if (place < 0 && source != nullptr) {
            zip_source_free(source);
        }
        constexpr zip_uint16_t firstDay = 0x21;  // 1980-01-01
        constexpr zip_uint32_t quickly = 3;
        const auto entry = static_cast<zip_uint64_t>(place);
        isMade = isMade && place >= 0 && zip_file_set_dostime(archive, entry, 0, firstDay, 0) == 0 &&
                 zip_set_file_compression(archive, entry, ZIP_CM_DEFLATE, quickly) == 0;
    }
    if (!isMade || zip_close(archive) != 0) {
        zip_discard(archive);
        RequireMade(false);
    }
    return BytesOfSource(target.get());
}

}  // namespace quillara
