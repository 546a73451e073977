#include "SqliteMemory.h"

#include <sqlite3.h>

#include <cstddef>
#include <cstring>

// The C library's own, under the names that the sanitizer does not take over.
extern "C" {
void *__libc_malloc(std::size_t size); // NOLINT(bugprone-reserved-identifier)
void *__libc_realloc(void *memory, std::size_t size); // NOLINT(bugprone-reserved-identifier)
void __libc_free(void *memory); // NOLINT(bugprone-reserved-identifier)
}

namespace {

constexpr std::size_t kHeader = alignof(std::max_align_t); // holds the size

void *withSize(void *block, int size)
{
    if (!block)
        return nullptr;
    std::memcpy(block, &size, sizeof size);
    return static_cast<char *>(block) + kHeader;
}

void *blockOf(void *memory)
{
    return static_cast<char *>(memory) - kHeader;
}

void *get(int size)
{
    return withSize(__libc_malloc(static_cast<std::size_t>(size) + kHeader), size);
}

void *resize(void *memory, int size)
{
    return withSize(__libc_realloc(blockOf(memory), static_cast<std::size_t>(size) + kHeader),
                    size);
}

void release(void *memory)
{
    __libc_free(blockOf(memory));
}

int sizeOf(void *memory)
{
    int size = 0;
    std::memcpy(&size, blockOf(memory), sizeof size);
    return size;
}

} // namespace

bool useOwnSqliteMemory()
{
    static sqlite3_mem_methods methods = { get,
                                           release,
                                           resize,
                                           sizeOf,
                                           [](int size) { return (size + 7) & ~7; },
                                           [](void *) { return 0; },
                                           [](void *) {},
                                           nullptr };
    return sqlite3_config(SQLITE_CONFIG_MALLOC, &methods) == SQLITE_OK;
}
