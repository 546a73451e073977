#pragma once

/*!
 * Gives SQLite memory past the sanitizer, which watches nothing in that library but would take most
 * of a run's time. Before its first use. What it keeps is known: sqlite3_memory_used().
 */
[[nodiscard]] bool useOwnSqliteMemory();
