#pragma once

#include "ArchiveLimits.h"
#include "TOLVGraphing/platform/foundation/KeyedArchive.h"
#include "TOLVGraphing/platform/foundation/KeyedArchiver.h"
#include <TOLVMath/Export.h>

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace TOLVGraphing {

/// Writes archived objects as a binary property list in the layout of a keyed archive: `$version` 100000, `$archiver` "NSKeyedArchiver", `$top` with the one
/// entry "root", and `$objects` with "$null" first. Every object, list, number and text has a place in `$objects` and is referred to by it. An object comes before
/// what it holds, its class after that, each class once; objects and lists that are identical and texts that are equal are stored once.
///
/// The root is what KeyedArchiver::archivedObject makes of an object; it is only read. A null root gives an archive of nothing. Keys that begin with "$" are stored with another "$" before them, as the reader expects them.
/// Throws ArchiveError when an object contains itself, when a text is not UTF-8 or has a zero character in it, and when the archive would be larger or deeper
/// than what is read again with the limits' default values. The same objects give the same bytes. Like the other functions here it may be called from several threads, each with objects of its own.
[[nodiscard]] TOLV_EXPORT std::vector<std::byte> propertyListData(const std::shared_ptr<ArchiveObject>& root);

/// Reads a keyed archive from a property list, binary or XML (there in UTF-8, a reference being a dictionary with the one entry "CF$UID"). KeyedUnarchiver::unarchivedObject makes objects of the result; the bytes are not
/// kept.
///
/// What is shared in the file is shared in the result. Numbers and texts may stand inline or be referred to; keys come in any order; the root may be under any name in
/// `$top` when it is the only one. Arrays become lists, dictionaries an object of class "NSDictionary" with its entries as values (only texts can be keys),
/// string objects texts. Bytes become an object of class "NSData" with the text "NS.bytes" in base64, dates one of class "NSDate" with the
/// number "NS.time" in seconds since 2001; everything else is an object with its values. A root that is a list is put into an object of class "NSArray" under
/// "NS.objects". An archive of nothing gives null.
///
/// Throws ArchiveError, saying what was found where and what was expected, on anything else: damaged or truncated files, references in circles or out of
/// range, keys that come twice in an object, names of classes of more than 1024 bytes, whole numbers beyond 64 bits with sign, other encodings than UTF-8, and whatever exceeds the limits.
/// Throws std::bad_alloc when memory runs out.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<ArchiveObject> archiveObjectFromPropertyList(std::span<const std::byte> data, const ArchiveLimits& limits = {});

/// Archives the object, and what it reaches, into the file, which is replaced as a whole or stays as it was (see AtomicFile). Throws FileError, which names the path and the reason, when the file
/// cannot be written and ArchiveError, with the path in front, when the object cannot be archived.
///
/// A graph is kept with its axes, ranges and markers; series, title and strategy are for whoever opens the archive to set again:
///
///     writeArchive("graph.plist", *graph);
///     const auto opened = std::dynamic_pointer_cast<TOLVGraph>(readArchive("graph.plist"));
TOLV_EXPORT void writeArchive(const std::filesystem::path& path, const Codable& root);

/// Reads an object back from a file, with the default limits: of the class that was archived, new, shared with nobody. Null when the archive holds nothing or values that make no object. Throws ArchiveError with the path
/// in front when the file cannot be opened, is no archive or holds something else than its classes expect.
[[nodiscard]] TOLV_EXPORT std::shared_ptr<Codable> readArchive(const std::filesystem::path& path);

} // namespace TOLVGraphing
