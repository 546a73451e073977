#pragma once
// Makes store files that no store has written.

#include "FuzzBytes.h"

#include <cstdint>
#include <string>

//! The wall clock at which a forged store is opened: 2031-03-05 12:00:00 UTC.
constexpr std::int64_t kForgeNow = 1930478400;
//! The boot clock then, and the kernel's boot id.
constexpr std::int64_t kForgeBoot = 1000000;
constexpr const char *kForgeBootId = "boot";

//! Numbers at limits, and those that such a store means something by.
[[nodiscard]] std::int64_t forgedNumber(FuzzBytes &bytes);
[[nodiscard]] std::string forgedText(FuzzBytes &bytes);

/*! What the files of a store hold, to begin with. */
struct StoreTemplates
{
    std::string first; //!< schema 1
    std::string current;
    std::string open; //!< the file of a store in use,
    std::string log; //!< and its log, which holds more
};

//! Made in \a folder, which is empty again afterwards.
[[nodiscard]] StoreTemplates makeTemplates(const std::string &folder);

//! Writes the files of a store, as \a bytes say, into \a folder.
void forgeStore(const StoreTemplates &templates, const std::string &folder, FuzzBytes &bytes);

[[nodiscard]] std::string contentOf(const std::string &path);
void writeFile(const std::string &path, const std::string &content);
void removeFilesIn(const std::string &folder);
