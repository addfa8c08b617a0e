#include "workbench/formats/PackedText.h"

#include <zlib.h>
#include <zstd.h>

#include <algorithm>
#include <new>

#include "workbench/data/Errors.h"
#include "workbench/formats/FileBytes.h"
#include "workbench/formats/FileSignature.h"
#include "workbench/formats/TextOfFile.h"

namespace quillara {
namespace {

constexpr std::string_view MarkOfGzip = "\x1F\x8B";
constexpr std::string_view MarkOfZstd = "\x28\xB5\x2F\xFD";
constexpr std::size_t RoomForUnpacked = std::size_t{256} * 1024;

[[noreturn]] void RefuseDamaged(const std::string& path) {
    throw DataError("\"" + path + "\" can't be read; it is damaged or cut short.");
}

/// Takes what comes out, and looks whether it is worth going on.
class UnpackedSink {
  public:
    UnpackedSink(const std::string& path, const std::string& encoding, WorkMonitor& monitor)
        : Path(path), MayHoldNulls(!encoding.empty()), Monitor(monitor) {}

    void Take(std::string_view piece) {
        const bool wasShort = Text.size() < BeginningLength;
        if (Text.size() + piece.size() > Text.capacity()) {
            const std::size_t room = std::max(2 * Text.capacity(), Text.size() + piece.size());
            Monitor.RequireMemory(room);
            Text.reserve(room);
        }
        Text += piece;
        Monitor.Advance(piece.size());
        if (wasShort && Text.size() >= BeginningLength) {
            CheckBeginning();
        }
    }

    [[nodiscard]] std::string Finish() {
        if (Text.size() < BeginningLength) {
            CheckBeginning();
        }
        return std::move(Text);
    }

  private:
    void CheckBeginning() const {
        const std::string_view beginning = std::string_view(Text).substr(0, BeginningLength);
        const FileContent content = FileContentOf(beginning.substr(0, SignatureLength), "");
        if (!content.Extension.empty()) {
            throw DataError("\"" + Path + "\" holds a packed " + std::string(content.Extension) +
                            " file, not delimited text; unpack it first.");
        }
        if (!MayHoldNulls) {
            CheckIsText(Path, beginning);
        }
    }

    const std::string& Path;
    bool MayHoldNulls;
    WorkMonitor& Monitor;
    std::string Text;
};

/// Zeros fill up blocks on some media.
bool IsFiller(std::string_view bytes) {
    return bytes.find_first_not_of('\0') == std::string_view::npos;
}

class GzipStream {
  public:
    explicit GzipStream(std::string_view bytes) {
        constexpr int onlyGzip = 16;
        State.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));  // isn't written to
        Rest = bytes.size();
        if (inflateInit2(&State, onlyGzip + MAX_WBITS) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    GzipStream(const GzipStream&) = delete;
    GzipStream& operator=(const GzipStream&) = delete;
    ~GzipStream() { inflateEnd(&State); }

    /// Fills a piece; empty at the end of all.
    [[nodiscard]] std::string_view Next(const std::string& path, std::string& room) {
        State.next_out = reinterpret_cast<Bytef*>(room.data());
        State.avail_out = static_cast<uInt>(room.size());
        while (State.avail_out > 0 && !(HasEnded && IsFiller(Unread()))) {
            Step(path);
        }
        return std::string_view(room).substr(0, room.size() - State.avail_out);
    }

  private:
    void Step(const std::string& path) {
        if (HasEnded && inflateReset(&State) != Z_OK) {
            RefuseDamaged(path);
        }
        constexpr std::size_t most = 1U << 30U;
        State.avail_in = static_cast<uInt>(std::min(Rest, most));
        const std::size_t given = State.avail_in;
        const int status = inflate(&State, Z_NO_FLUSH);
        Rest -= given - State.avail_in;
        HasEnded = status == Z_STREAM_END;
        if (status != Z_OK && !HasEnded) {
            RefuseDamaged(path);
        }
    }

    [[nodiscard]] std::string_view Unread() const { return {reinterpret_cast<const char*>(State.next_in), Rest}; }

    z_stream State{};
    std::size_t Rest = 0;
    bool HasEnded = false;
};

class ZstdStream {
  public:
    explicit ZstdStream(std::string_view bytes) : State(ZSTD_createDStream()), In{bytes.data(), bytes.size(), 0} {
        if (State == nullptr) {
            throw std::bad_alloc();
        }
    }
    ZstdStream(const ZstdStream&) = delete;
    ZstdStream& operator=(const ZstdStream&) = delete;
    ~ZstdStream() { ZSTD_freeDStream(State); }

    [[nodiscard]] std::string_view Next(const std::string& path, std::string& room) {
        ZSTD_outBuffer out{room.data(), room.size(), 0};
        while (out.pos < out.size && !(In.pos == In.size && HasEnded)) {
            const std::size_t before = out.pos + In.pos;
            const std::size_t wanted = ZSTD_decompressStream(State, &out, &In);
            HasEnded = wanted == 0;
            if (ZSTD_isError(wanted) != 0 || (!HasEnded && out.pos + In.pos == before)) {
                RefuseDamaged(path);
            }
        }
        return std::string_view(room).substr(0, out.pos);
    }

  private:
    ZSTD_DStream* State;
    ZSTD_inBuffer In;
    bool HasEnded = false;
};

template <typename Stream>
std::string Unpacked(std::string_view bytes, const std::string& path, UnpackedSink& sink) {
    Stream stream(bytes);
    std::string room(RoomForUnpacked, '\0');
    for (std::string_view piece = stream.Next(path, room); !piece.empty(); piece = stream.Next(path, room)) {
        sink.Take(piece);
    }
    return sink.Finish();
}

}  // namespace

bool IsPacked(std::string_view bytes) {
    return bytes.starts_with(MarkOfGzip) || bytes.starts_with(MarkOfZstd);
}

std::string UnpackedText(const std::string& path, std::string_view bytes, const std::string& encoding,
                         WorkMonitor& monitor) {
    UnpackedSink sink(path, encoding, monitor);
    return bytes.starts_with(MarkOfGzip) ? Unpacked<GzipStream>(bytes, path, sink)
                                         : Unpacked<ZstdStream>(bytes, path, sink);
}

}  // namespace quillara
