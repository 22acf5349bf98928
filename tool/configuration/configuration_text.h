// A ConfigurationText is the text of a configuration file, with the places that the library reads.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ckscribe {

// Places are offsets into Text(). Every answer comes from the look-up that the library uses, too
// (config/entry_lookup.h). The object never changes; any thread may ask.
class ConfigurationText {
public:
    // Only the part before the first NUL counts, as it does for the store.
    explicit ConfigurationText(std::string_view text);

    std::string_view Text() const { return text_; }

    struct Section {
        std::size_t name;
        std::size_t end;  // of the "}", or of the text
        bool isClosed;    // there is a "}"
    };
    std::optional<Section> FindSection(const std::string& name) const;

    struct Entry {
        std::size_t key;
        std::size_t value;
        std::size_t end;  // of the value
    };
    std::optional<Entry> FindEntry(const std::string& section, const std::string& key) const;

    // Returns what the entry's key reads as.
    std::string_view ValueOf(const Entry& entry) const {
        return Text().substr(entry.value, entry.end - entry.value);
    }

    // Returns the line of a place, from 1. A line ends with a line feed, a carriage return, or both.
    int LineOf(std::size_t place) const;

private:
    std::string text_;
    std::vector<std::size_t> lineBegins_;
};

}  // namespace ckscribe
