#pragma once

#include <string>

namespace host {

/// A plug-in that is loaded for as long as this lives.
class Plugin {
public:
    /// Loads the shared object and initialises the plug-in. Throws std::runtime_error where either fails.
    explicit Plugin(const std::string& path);
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;
    ~Plugin();

    /// Where the plug-in lies if nobody says otherwise: ../lib, as seen from this program.
    static std::string defaultPath(const std::string& name);

private:
    void* handle_;
};

} // namespace host
