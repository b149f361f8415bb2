#include "Tree.h"
#include "library/ShelfIndex.h"
#include "library/Storage.h"
#include "support/Rounds.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/stat.h>
#include <string>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;
using namespace quillary;

namespace {

struct RawEntry {
    std::uint64_t number;
    std::int64_t next;
    std::uint16_t length;
    std::uint8_t type;
    char name[];
};

/// What the rival loop found, so that skipped work would show.
struct Found {
    std::size_t files = 0;
    std::size_t attributes = 0;
    long long dates = 0;
};

/// The plain loop over system calls: every entry, its date, its attribute, nothing kept.
void plainLoop(int folder, Found& found) {
    alignas(RawEntry) char buffer[65536];
    std::vector<std::string> below;
    if (::fchdir(folder) != 0) return;
    for (long length = 0; (length = ::syscall(SYS_getdents64, folder, buffer, sizeof buffer)) > 0;) {
        for (long at = 0; at < length;) {
            const auto* entry = reinterpret_cast<const RawEntry*>(buffer + at);
            at += entry->length;
            if (entry->name[0] == '.') continue;
            if (entry->type == 4) {
                below.emplace_back(entry->name);
                continue;
            }
            struct statx status {};
            ::statx(folder, entry->name, AT_SYMLINK_NOFOLLOW | AT_STATX_DONT_SYNC, STATX_MTIME | STATX_TYPE, &status);
            char value[64];
            const ssize_t size = ::getxattr(entry->name, "user.com.tamsel.quillary.source", value, sizeof value);
            ++found.files;
            found.dates += status.stx_mtime.tv_sec;
            found.attributes += size > 0 ? 1 : 0;
        }
    }
    for (const std::string& name : below) {
        const int child = ::openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        plainLoop(child, found);
        ::close(child);
    }
}

Found plainListing(const fs::path& root) {
    const int home = ::open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const int folder = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    Found found;
    plainLoop(folder, found);
    ::close(folder);
    if (::fchdir(home) != 0) std::exit(1);
    ::close(home);
    return found;
}

void expect(bool right, const char* what) {
    if (right) return;
    std::fprintf(stderr, "wrong result: %s\n", what);
    std::exit(1);
}

std::size_t withFormat(const LibraryItems& items) {
    std::size_t count = 0;
    for (const LibraryItem& item : items) count += item.sourceFormat ? 1U : 0U;
    return count;
}

} // namespace

/// [--files N] [--runs N] [--warm N]: a tree of 100,000 files is made in the system's temporary folder and removed.
int main(int argumentCount, char** arguments) {
    int fileCount = 100'000;
    for (int i = 1; i + 1 < argumentCount; ++i)
        if (std::strcmp(arguments[i], "--files") == 0) fileCount = std::atoi(arguments[i + 1]);

    std::string pattern = (fs::temp_directory_path() / "quillary-bench-XXXXXX").string();
    if (!mkdtemp(pattern.data())) return 1;
    const fs::path root = pattern;
    benchmark::makeTree(root, fileCount);
    const auto expected = static_cast<std::size_t>(fileCount);
    const auto extensions = Storage::extensions(Storage::Folder::images);

    const Found plain = plainListing(root);
    expect(plain.files == expected && plain.attributes == expected, "plain loop");

    benchmark::Rounds rounds("list " + std::to_string(fileCount) + " files in 2,000 folders",
                             benchmark::Rounds::options(argumentCount, arguments));
    rounds.add("getdents64 + statx + getxattr loop",
               [&] { expect(plainListing(root).files == expected, "plain loop"); });
    rounds.add("listing, unwatched", [&] {
        ShelfIndex index(root, extensions, false);
        index.refresh();
        expect(index.items()->size() == expected && withFormat(*index.items()) == expected, "listing");
    });
    rounds.add("first listing of a watching panel", [&] {
        ShelfIndex index(root, extensions, true);
        index.refresh();
        expect(index.items()->size() == expected, "watched listing");
    });
    ShelfIndex kept(root, extensions, true);
    kept.refresh();
    rounds.add("unchanged relist of a watching panel", [&] { expect(!kept.refresh(), "unchanged relist"); });
    int change = 0;
    rounds.add(
        "relist after one new file",
        [&] {
            const fs::path file = root / "Logos" / ("new " + std::to_string(change++) + ".png");
            ::close(::open(file.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
            expect(kept.refresh(), "relist after a change");
            ::unlink(file.c_str());
            kept.refresh();
        },
        "and after its removal");
    rounds.add("only counting", [&] { expect(ShelfIndex::countFiles(root, extensions) == fileCount, "count"); });
    rounds.print();

    const auto memory = benchmark::peakMemoryOf([&] {
        ShelfIndex index(root, extensions, true);
        index.refresh();
    });
    std::printf("memory of a kept listing: %.1f MB\n", (memory.peak - memory.before) / 1e6);
    fs::remove_all(root);
}
