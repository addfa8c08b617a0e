#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace quillara {

/// Takes the next bytes of a file. Throws DataError when they can't be written, Interrupted when cancelled.
using ByteSink = std::function<void(std::string_view bytes)>;

/// Makes what `produce` gives to its sink the whole content of a file, new or old. It is written under a temporary name
/// in the same folder, brought to the disk and renamed, and the new name is brought to the disk too, so that a reader
/// sees the old file or the new one and never a part. Keeps the permissions of a file that it replaces and follows
/// links; a device or pipe is written to as it stands. `cancelled` is asked after each piece that is written and right
/// before the renaming. `check` is called with the temporary name when all is on the disk, and refuses the new file by
/// throwing; a device or pipe isn't checked. Throws DataError when that fails, Interrupted when cancelled; the old file
/// is then unchanged and no temporary file is left, nor is one when a signal other than SIGKILL ends the program.
void ReplaceFile(const std::string& path, const std::function<void(const ByteSink& write)>& produce,
                 const std::function<bool()>& cancelled = {},
                 const std::function<void(const std::string& temporary)>& check = {});
/// The same with content that is there already.
void ReplaceFile(const std::string& path, std::string_view content, const std::function<bool()>& cancelled = {},
                 const std::function<void(const std::string& temporary)>& check = {});

/// The path of the standard output, which is written as it stands whatever it is.
inline constexpr const char* StandardOutputPath = "/dev/stdout";

/// Whether what is written to a path goes to a device or pipe, or to the standard output.
[[nodiscard]] bool IsDeviceOrPipe(const std::string& path);

/// Whether two paths name one file, links followed, also those to files that aren't there yet.
[[nodiscard]] bool NameOneFile(const std::string& path, const std::string& other);

}  // namespace quillara
