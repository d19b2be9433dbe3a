#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zent::test {

/// A test with a scene of its own, which plug names resolve in, and the errors that were shown.
class OpenScene : public testing::Test {
protected:
    OpenScene();
    ~OpenScene() override;

    /// Opens the scene of a scene file with this text.
    void open(const std::string& text, const std::string& resource = "");
    /// What opening a scene file with this text throws.
    std::string whyNot(const std::string& text);

    std::vector<std::string> errors;
};

/// A path in this test program's own folder.
std::string temporaryPath(const std::string& name);

/// The text that a call throws, empty for none.
template <class Call>
std::string thrownText(Call&& call) {
    try {
        call();
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

} // namespace zent::test
