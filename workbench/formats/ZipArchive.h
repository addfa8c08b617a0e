#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "workbench/formats/WorkMonitor.h"

struct zip;

namespace quillara {

/// A zip archive that is read.
class ZipArchive {
  public:
    /// Throws DataError, naming the file, when it can't be read or is no archive.
    explicit ZipArchive(std::string path);

    [[nodiscard]] const std::string& Path() const { return File; }
    [[nodiscard]] bool Has(const std::string& entry) const;
    /// Gives the bytes of an entry to `take`, piece by piece. Throws DataError,
    /// naming the file, when there is no such entry, when it is damaged, and when it unpacks to more than 256 MiB and
    /// 200 times its size.
    void Read(const std::string& entry, WorkMonitor& monitor,
              const std::function<void(std::string_view piece)>& take) const;

    /// The error of an archive whose content isn't as it must be.
    [[noreturn]] void RefuseDamaged() const;

  private:
    struct Closer {
        void operator()(zip* archive) const;
    };

    std::string File;
    std::unique_ptr<zip, Closer> Archive;
};

}  // namespace quillara
