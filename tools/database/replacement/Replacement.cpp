#include "Replacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "database/DatabaseErrors.h"
#include "database/Journals.h"
#include "text/formatted.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* SUFFIX = ".zav-new";
constexpr mode_t PRIVATE = 0600;  // until it is in place

/// With what the system says.
[[noreturn]] void refuse(const std::string& file, const std::string& what)
{
    throw RefusedReplacement(formatted("{}: {}: {}", file, what, std::strerror(errno)));
}

void requireOrdinaryFile(const std::string& file)
{
    std::error_code error;
    if (!fs::is_regular_file(file, error)) {
        throw RefusedReplacement(
            formatted("{}: {}", file, error ? error.message() : "is no ordinary file"));
    }
}

std::string resolved(const std::string& target)
{
    std::error_code error;
    const fs::file_status status = fs::status(target, error);
    if (status.type() == fs::file_type::directory) {
        throw RefusedReplacement(target + ": is a folder");
    }
    if (status.type() == fs::file_type::not_found) {
        if (fs::is_symlink(target, error)) {
            throw RefusedReplacement(target + ": is a link that leads to no file");
        }
        return fs::absolute(target).string();
    }
    requireOrdinaryFile(target);
    return fs::canonical(target).string();
}

/// @return whether an open file still has its name.
bool isNamed(const Descriptor& file, const std::string& path)
{
    struct stat opened = {};
    struct stat named = {};
    return fstat(file.number(), &opened) == 0 && lstat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

bool lock(const Descriptor& file, const std::string& path, const Patience& patience)
{
    while (flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        if (errno != EWOULDBLOCK) {
            refuse(path, "cannot be locked");
        }
        if (!patience.wait()) {
            return false;
        }
    }
    return true;
}

/// The new file of this attempt alone: another one may have put its own in place, or removed it,
/// while this one was waiting.
Descriptor openNewFile(const std::string& path)
{
    const Patience patience;
    for (;;) {
        Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, PRIVATE));
        if (!file.isOpen()) {
            refuse(path, "cannot be made");
        }
        if (!lock(file, path, patience)) {
            throw RefusedReplacement(path + ": another attempt is at work");
        }
        if (isNamed(file, path)) {
            return file;
        }
    }
}

void writeAll(const Descriptor& file, const std::string& bytes, const std::string& path)
{
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = write(file.number(), bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno != EINTR) {
            refuse(path, "cannot be written");
        }
        done += count > 0 ? static_cast<std::size_t>(count) : 0;
    }
}

/// A new file is one file: neither its journal nor its mode can be taken along.
void refuseUnfit(const LockedFile& source, const std::string& file)
{
    const std::string path = fs::canonical(file).string();
    for (const char* suffix : {JOURNAL_SUFFIX, WAL_SUFFIX}) {
        std::error_code error;
        if (fs::exists(path + suffix, error)) {
            throw UnfitFile(
                formatted("{}: {} lies beside it; close what has it open, or run VACUUM", file,
                          fs::path(path + suffix).filename().string()));
        }
    }
    if (source.isInWalMode()) {
        throw UnfitFile(file + ": is in WAL mode; run PRAGMA journal_mode=DELETE before shipping");
    }
}

}  // namespace

Replacement::Replacement(const std::string& target)
    : m_target(resolved(target)),
      m_path(m_target + SUFFIX),
      m_replaced(m_target),
      m_file(openNewFile(m_path))
{
    removeLeftovers();
    if (ftruncate(m_file.number(), 0) != 0) {
        refuse(m_path, "cannot be emptied");
    }
}

Replacement::~Replacement()
{
    if (!m_isInPlace) {
        unlink(m_path.c_str());
        removeLeftovers();
    }
}

void Replacement::copyFrom(const std::string& file)
{
    constexpr std::uint64_t CHUNK = 256UL * 1024;
    requireOrdinaryFile(file);
    const LockedFile source(file, LockedFile::Lock::AGAINST_CHANGES, Patience());
    refuseUnfit(source, file);
    for (std::uint64_t done = 0; done < source.size(); done += CHUNK) {
        writeAll(m_file, source.read(done, CHUNK), m_path);
    }
    flush();
}

void Replacement::putInPlace()
{
    m_replaced.hold();
    takeOwnerAndMode();
    flush();
    flushFolder();  // a journal that is gone must not come back with the power
    if (rename(m_path.c_str(), m_target.c_str()) != 0) {
        refuse(m_target, "cannot be replaced");
    }
    m_isInPlace = true;
    try {
        flushFolder();
    } catch (const RefusedReplacement& failure) {
        throw std::runtime_error(formatted("{} is replaced, but a cut of the power may undo it: {}",
                                           m_target, failure.what()));
    }
}

void Replacement::takeOwnerAndMode()
{
    struct stat old = {};
    constexpr mode_t MODE = 0644;
    constexpr mode_t ALL_BITS = 07777;
    mode_t mode = MODE;
    if (stat(m_target.c_str(), &old) == 0) {
        mode = old.st_mode & ALL_BITS;
        if (fchown(m_file.number(), old.st_uid, old.st_gid) != 0) {
            refuse(m_path, "cannot be given the owner of the old file");
        }
    }
    if (fchmod(m_file.number(), mode) != 0) {
        refuse(m_path, "cannot be given the mode of the old file");
    }
}

void Replacement::flush()
{
    if (fsync(m_file.number()) != 0) {
        refuse(m_path, "cannot be flushed");
    }
}

void Replacement::flushFolder() const
{
    const std::string folder = fs::path(m_target).parent_path();
    const Descriptor opened(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened.isOpen() || (fsync(opened.number()) != 0 && errno != EINVAL)) {
        refuse(folder, "cannot be flushed");
    }
}

/// SQLite's, of a new file that was being made.
void Replacement::removeLeftovers() const
{
    for (const char* suffix : FILE_SUFFIXES) {
        unlink((m_path + suffix).c_str());
    }
}
