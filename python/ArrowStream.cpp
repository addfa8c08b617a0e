#include "python/ArrowStream.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <utility>

namespace {

/// What stands behind an exported schema or array.
template <typename Struct>
struct Behind {
    std::shared_ptr<const ArrowColumn> Column;
    std::vector<Struct> Children{};
    std::vector<Struct*> ChildPlaces{};
    std::vector<const void*> Buffers{};
    Struct Dictionary{};
};

/// Whoever took a child or the dictionary has left it without a release.
template <typename Struct>
void Release(Struct* given) {
    auto* behind = static_cast<Behind<Struct>*>(given->PrivateData);
    for (Struct& child : behind->Children) {
        ReleaseArrow(child);
    }
    ReleaseArrow(behind->Dictionary);
    delete behind;
    given->Release = nullptr;
}

void FillIn(ArrowSchema& schema, const ArrowColumn& column, Behind<ArrowSchema>&) {
    schema.Format = column.Format.c_str();
    schema.Name = column.Name.c_str();
    schema.Flags = ArrowNullable;
}

void FillIn(ArrowArray& array, const ArrowColumn& column, Behind<ArrowArray>& behind) {
    for (const auto& buffer : column.Buffers) {
        behind.Buffers.push_back(buffer.get());
    }
    array.Length = static_cast<std::int64_t>(column.Length);
    array.NullCount = static_cast<std::int64_t>(column.Gaps);
    array.BufferCount = static_cast<std::int64_t>(behind.Buffers.size());
    array.Buffers = behind.Buffers.data();
}

/// The schema or the array of a column. After an exception nothing is left.
template <typename Struct>
Struct Exported(std::shared_ptr<const ArrowColumn> column) {
    const ArrowColumn& own = *column;
    auto made = std::make_unique<Behind<Struct>>(Behind<Struct>{std::move(column)});
    Struct given;
    given.PrivateData = made.get();
    given.Release = Release<Struct>;
    ArrowHeld<Struct> held(given);
    Behind<Struct>& behind = *made.release();
    FillIn(*held.Put(), own, behind);
    behind.Children.reserve(own.Children.size());
    for (const ArrowColumn& child : own.Children) {
        behind.Children.push_back(Exported<Struct>({behind.Column, &child}));
        behind.ChildPlaces.push_back(&behind.Children.back());
    }
    held->ChildCount = static_cast<std::int64_t>(behind.Children.size());
    held->Children = behind.ChildPlaces.data();
    if (own.Dictionary) {
        behind.Dictionary = Exported<Struct>(own.Dictionary);
        held->Dictionary = &behind.Dictionary;
    }
    return std::exchange(*held.Put(), Struct());
}

struct StreamBehind {
    std::shared_ptr<const ArrowColumn> Table;
    bool IsGiven = false;
};

StreamBehind& BehindOf(ArrowArrayStream* stream) {
    return *static_cast<StreamBehind*>(stream->PrivateData);
}

template <typename Struct>
int Give(Struct* place, const StreamBehind& behind) {
    try {
        *place = Exported<Struct>(behind.Table);
        return 0;
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
}

int GetSchema(ArrowArrayStream* stream, ArrowSchema* schema) {
    return Give(schema, BehindOf(stream));
}

int GetNext(ArrowArrayStream* stream, ArrowArray* array) {
    StreamBehind& behind = BehindOf(stream);
    if (behind.IsGiven) {
        *array = {};
        return 0;
    }
    const int failure = Give(array, behind);
    behind.IsGiven = failure == 0;
    return failure;
}

const char* GetLastError(ArrowArrayStream*) {
    return nullptr;  // the number says all
}

void ReleaseStream(ArrowArrayStream* stream) {
    delete &BehindOf(stream);
    stream->Release = nullptr;
}

}  // namespace

ArrowHeld<ArrowArrayStream> StreamOf(std::vector<ArrowColumn> columns, std::size_t cases) {
    auto table = std::make_shared<ArrowColumn>(ArrowColumn{"", "+s", cases, 0, {nullptr}});
    table->Children = std::move(columns);
    ArrowArrayStream stream{GetSchema, GetNext, GetLastError, ReleaseStream, new StreamBehind{std::move(table)}};
    return ArrowHeld<ArrowArrayStream>(stream);
}
