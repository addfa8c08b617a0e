#pragma once

#include <QStringList>

namespace quillara {

/// The files that were open last, the newest first, as the preferences remember them.
class RecentFiles {
  public:
    static constexpr int Most = 8;

    [[nodiscard]] static QStringList All();
    static void Add(const QString& path);
    static void Remove(const QString& path);
    static void Clear();
};

}  // namespace quillara
