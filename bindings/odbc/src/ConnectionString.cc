#include "ConnectionString.h"

#include <algorithm>
#include <charconv>

#include "Diagnostics.h"

namespace nkdt::odbc {

namespace {

constexpr int maxLockWaitMilliseconds = 5000;
constexpr int maxSqliteTimeout = 2400;  // its driver tries a locked statement twice

char lowerAscii(char ch) noexcept {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}

std::string lowerAscii(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char ch) { return lowerAscii(ch); });
    return lower;
}

bool equalKeys(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}

std::string_view trimmed(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

// The end of the value that starts at the beginning of text: a ";", outside of braces if the value starts
// with one.
std::size_t valueEnd(std::string_view text) noexcept {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos || text[first] != '{') return std::min(text.find(';'), text.size());
    auto close = text.find('}', first);
    while (close != std::string_view::npos && close + 1 < text.size() && text[close + 1] == '}') {
        close = text.find('}', close + 2);
    }
    return close == std::string_view::npos ? text.size() : std::min(text.find(';', close), text.size());
}

bool waitsLongerThanAllowed(std::string_view milliseconds) noexcept {
    int value = 0;
    const auto [end, error] =
        std::from_chars(milliseconds.data(), milliseconds.data() + milliseconds.size(), value);
    return error != std::errc() || end != milliseconds.data() + milliseconds.size() || value < 0 ||
           value > maxSqliteTimeout;
}

}  // namespace

ConnectionString::ConnectionString(std::string_view text) {
    while (!text.empty()) {
        const auto equals = text.find('=');
        const auto semicolon = text.find(';');
        if (semicolon < equals) {
            if (!trimmed(text.substr(0, semicolon)).empty()) {
                fail("HY000", "Verbindungsangabe ohne \"=\" vor \";\"");
            }
            text.remove_prefix(semicolon + 1);
            continue;
        }
        if (equals == std::string_view::npos) {
            if (!trimmed(text).empty()) fail("HY000", "Verbindungsangabe ohne \"=\" am Ende");
            return;
        }
        const std::string_view key = trimmed(text.substr(0, equals));
        text.remove_prefix(equals + 1);
        const std::size_t end = valueEnd(text);
        m_attributes.emplace_back(key, trimmed(text.substr(0, end)));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

ConnectionString ConnectionString::forSqliteFile(std::string_view path) {
    ConnectionString result("");
    result.m_attributes.emplace_back("Driver", "SQLite3");
    // A leading brace would start a quoted value; in front of a relative path "./" changes nothing.
    result.m_attributes.emplace_back("Database", (path.substr(0, 1) == "{" ? "./" : "") + std::string(path));
    return result;
}

const std::string* ConnectionString::find(std::string_view key) const noexcept {
    for (const auto& [name, value] : m_attributes) {
        if (equalKeys(name, key)) return &value;
    }
    return nullptr;
}

std::string* ConnectionString::find(std::string_view key) noexcept {
    return const_cast<std::string*>(std::as_const(*this).find(key));
}

void ConnectionString::addMissing(std::string_view key, std::string_view value) {
    if (find(key) == nullptr) m_attributes.emplace_back(key, value);
}

void ConnectionString::complete(bool createMissing) {
    const std::string* driver = find("Driver");
    const std::string name = driver == nullptr ? std::string() : lowerAscii(*driver);
    const bool anyDriver = driver == nullptr;
    // Drivers ignore what they do not know, so a data source, whose driver is not known here, gets
    // everything.
    if (anyDriver || name.find("sqlite") != std::string::npos) completeSqlite(createMissing);
    if (anyDriver || name.find("postgres") != std::string::npos ||
        name.find("psqlodbc") != std::string::npos) {
        completePostgresql();
    }
}

void ConnectionString::completeSqlite(bool createMissing) {
    if (!createMissing) addMissing("NoCreat", "1");
    addMissing("StepAPI", "1");
    addMissing("Timeout", std::to_string(maxSqliteTimeout));
    std::string& timeout = *find("Timeout");
    if (waitsLongerThanAllowed(timeout)) timeout = std::to_string(maxSqliteTimeout);
}

void ConnectionString::completePostgresql() {
    addMissing("BoolsAsChar", "0");
    addMissing("UseDeclareFetch", "1");
    addMissing("Fetch", "1000");
    m_ownConnSettings = find("ConnSettings") != nullptr;
    addMissing("ConnSettings", "SET lock_timeout%3D" + std::to_string(maxLockWaitMilliseconds));
}

std::string ConnectionString::text() const {
    std::string text;
    for (const auto& [key, value] : m_attributes) {
        if (!text.empty()) text += ';';
        text += key;
        text += '=';
        text += value;
    }
    return text;
}

}  // namespace nkdt::odbc
