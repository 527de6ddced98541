#include "PropertyListArchive.h"

#include "BinaryPropertyListReader.h"
#include "KeyedObjectReader.h"
#include "KeyedObjectWriter.h"
#include "XmlPropertyListReader.h"
#include "desktop/output/AtomicFile.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <system_error>

namespace TOLVGraphing {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { static_cast<void>(std::fclose(file)); }
};

struct BinaryDeleter {
    void operator()(char* bytes) const { plist_to_bin_free(bytes); }
};

std::vector<std::byte> binaryData(plist_t tree)
{
    // Nothing is written unless the pointer is null beforehand.
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(tree, &bytes, &length);
    const std::unique_ptr<char, BinaryDeleter> owner(bytes);
    if (!bytes || length == 0)
        throw ArchiveError("the archive cannot be laid out as a binary property list");
    const auto* first = reinterpret_cast<const std::byte*>(bytes);
    return {first, first + length};
}

bool looksLikeXml(std::span<const std::byte> data)
{
    std::string_view start(reinterpret_cast<const char*>(data.data()), std::min<std::size_t>(data.size(), 256));
    if (start.starts_with("\xEF\xBB\xBF"))
        start.remove_prefix(3);
    const std::size_t first = start.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && start[first] == '<';
}

bool looksBinary(std::span<const std::byte> data)
{
    static constexpr std::string_view kMagic = "bplist00";
    return data.size() >= kMagic.size() && std::string_view(reinterpret_cast<const char*>(data.data()), kMagic.size()) == kMagic;
}

std::vector<std::byte> fileContents(const std::filesystem::path& path, std::size_t limit)
{
    const auto fail = [](int errorNumber) { throw ArchiveError("cannot be read: " + std::generic_category().message(errorNumber)); };
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rbe"));
    if (!file)
        fail(errno);
    std::vector<std::byte> contents;
    std::array<std::byte, std::size_t{1} << 16U> piece{};
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), file.get())) {
        contents.insert(contents.end(), piece.begin(), piece.begin() + static_cast<std::ptrdiff_t>(count));
        if (contents.size() > limit)
            throw ArchiveError("found more than " + std::to_string(limit) + " bytes, expected a smaller archive");
    }
    if (std::ferror(file.get()))
        fail(errno);
    return contents;
}

} // namespace

std::vector<std::byte> propertyListData(const std::shared_ptr<ArchiveObject>& root)
{
    std::vector<std::byte> data = binaryData(plist::KeyedObjectWriter().write(root).get());
    // What is written has to be readable: an archive beyond the reader's limits is refused now and not when it is needed.
    [[maybe_unused]] const auto readBack = archiveObjectFromPropertyList(data);
    return data;
}

std::shared_ptr<ArchiveObject> archiveObjectFromPropertyList(std::span<const std::byte> data, const ArchiveLimits& limits)
{
    if (data.empty())
        throw ArchiveError("found no bytes, expected a binary or XML property list");
    if (!looksBinary(data) && !looksLikeXml(data))
        throw ArchiveError(R"(found something else than a property list, expected one that begins with "bplist00" or "<")");
    const plist::Value tree = looksBinary(data) ? plist::readBinaryPropertyList(data, limits) : plist::readXmlPropertyList(data, limits);
    return plist::KeyedObjectReader(tree, limits).readRoot();
}

void writeArchive(const std::filesystem::path& path, const Codable& root)
{
    std::vector<std::byte> data;
    try {
        data = propertyListData(KeyedArchiver::archivedObject(root));
    } catch (const ArchiveError& error) {
        throw ArchiveError(path.string() + ": " + error.what());
    }
    writeFileAtomically(path, data);
}

std::shared_ptr<Codable> readArchive(const std::filesystem::path& path)
{
    try {
        return KeyedUnarchiver::unarchivedObject(archiveObjectFromPropertyList(fileContents(path, ArchiveLimits().bytes)));
    } catch (const ArchiveError& error) {
        throw ArchiveError(path.string() + ": " + error.what());
    }
}

} // namespace TOLVGraphing
