#pragma once

#include "fields.h"

#include <span>
#include <string>
#include <string_view>

namespace simulator {

/// The stand-in's memory between calls: small files of name=value lines in one directory. A file that is
/// missing or unreadable reads as no fields at all; each write replaces a file whole, so that a reader never
/// sees half of one.
class StateStore
{
public:
    explicit StateStore(std::string directory);

    /// The directory that BRINDLECOVE_SIMULATOR_STATE names, or the one in the build tree.
    [[nodiscard]] static std::string configuredDirectory();

    [[nodiscard]] Fields read(std::string_view name) const;

    /// False when the file could not be written; what was there before is then still there.
    [[nodiscard]] bool write(std::string_view name, const Fields &fields) const;

    /// False when there was nothing to remove.
    [[nodiscard]] bool remove(std::string_view name) const;

    [[nodiscard]] std::string pathOf(std::string_view name) const;

    /// Adds one line to calls.log: the arguments as a JSON array.
    void recordCall(std::span<const std::string_view> arguments) const;

private:
    std::string m_directory;
};

} // namespace simulator
