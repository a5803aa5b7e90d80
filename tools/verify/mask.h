#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace dialwright::verify {

/// Takes out of a text what tells whose machine this is: paths of the user's, and the names of user, machine and
/// domain.
class Mask {
public:
    /// `folder` is shown as <sdk>, `work` as <work>.
    Mask(const std::filesystem::path& folder, const std::filesystem::path& work);

    [[nodiscard]] std::string operator()(const std::string& utf8) const;

private:
    struct Secret {
        std::wstring text;
        std::wstring shown;
        bool isWord = false;
    };
    void AddPath(const std::wstring& path, const wchar_t* shown);
    void AddName(const wchar_t* variable, const wchar_t* shown);

    std::vector<Secret> secrets;
};

}  // namespace dialwright::verify
