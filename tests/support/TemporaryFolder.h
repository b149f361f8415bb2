#pragma once

#include <QByteArray>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

namespace quillary::test {

/// A folder of its own for one test, removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quillary-test-XXXXXX").string();
        if (!mkdtemp(pattern.data())) std::abort();
        m_path = std::filesystem::canonical(pattern);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return m_path; }
    std::filesystem::path operator/(const std::filesystem::path& below) const { return m_path / below; }

private:
    std::filesystem::path m_path;
};

/// Makes the folders above it too, and returns the file.
inline std::filesystem::path writeFile(const std::filesystem::path& file, std::string_view bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file;
}
inline std::filesystem::path writeFile(const std::filesystem::path& file, const QByteArray& bytes) {
    return writeFile(file, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}
inline std::filesystem::path writeFile(const std::filesystem::path& file, const char* text) {
    return writeFile(file, std::string_view(text));
}

inline std::string readFile(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace quillary::test
