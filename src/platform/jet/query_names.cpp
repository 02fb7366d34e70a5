#include "jet/query_names.h"

#include <algorithm>
#include <iterator>

namespace relvane::jet {
namespace {

// Words that would be read as part of the statement: the words of SQL, the names of data types, and a few more
// that Access is seen to bracket. In capitals, sorted by code unit.
constexpr TextView reservedWords[] = {
    u"ACTION",      u"ADD",        u"ALL",
    u"ALTER",       u"AND",        u"ANY",
    u"AS",          u"ASC",        u"AUTOINCREMENT",
    u"BETWEEN",     u"BINARY",     u"BIT",
    u"BOOLEAN",     u"BY",         u"BYTE",
    u"CASCADE",     u"CHAR",       u"CHARACTER",
    u"CHECK",       u"COLUMN",     u"CONSTRAINT",
    u"COUNTER",     u"CREATE",     u"CURRENCY",
    u"DATABASE",    u"DATE",       u"DATETIME",
    u"DEFAULT",     u"DELETE",     u"DESC",
    u"DISALLOW",    u"DISTINCT",   u"DISTINCTROW",
    u"DOUBLE",      u"DROP",       u"EQV",
    u"EXISTS",      u"FALSE",      u"FLOAT",
    u"FLOAT4",      u"FLOAT8",     u"FOREIGN",
    u"FROM",        u"FUNCTION",   u"GENERAL",
    u"GROUP",       u"GUID",       u"HAVING",
    u"IEEEDOUBLE",  u"IEEESINGLE", u"IGNORE",
    u"IMP",         u"IN",         u"INDEX",
    u"INNER",       u"INSERT",     u"INT",
    u"INTEGER",     u"INTEGER1",   u"INTEGER2",
    u"INTEGER4",    u"INTO",       u"IS",
    u"JOIN",        u"KEY",        u"LEFT",
    u"LEVEL",       u"LIKE",       u"LOGICAL",
    u"LOGICAL1",    u"LONG",       u"LONGBINARY",
    u"LONGTEXT",    u"MEMO",       u"MOD",
    u"MONEY",       u"MONTH",      u"NAMES",
    u"NO",          u"NOT",        u"NOTE",
    u"NULL",        u"NUMBER",     u"NUMERIC",
    u"OLEOBJECT",   u"ON",         u"OPTION",
    u"OR",          u"ORDER",      u"OUTER",
    u"OWNERACCESS", u"PARAMETERS", u"PERCENT",
    u"PIVOT",       u"PRIMARY",    u"PROCEDURE",
    u"REAL",        u"REFERENCES", u"RIGHT",
    u"SELECT",      u"SET",        u"SHORT",
    u"SINGLE",      u"SMALLINT",   u"SOME",
    u"STRING",      u"TABLE",      u"TABLEID",
    u"TEXT",        u"TIME",       u"TIMESTAMP",
    u"TOP",         u"TRANSFORM",  u"TRUE",
    u"UNION",       u"UNIQUE",     u"UPDATE",
    u"VALUE",       u"VALUES",     u"VARBINARY",
    u"VARCHAR",     u"WHERE",      u"WITH",
    u"XOR",         u"YEAR",       u"YES",
    u"YESNO",
};
static_assert(std::is_sorted(std::begin(reservedWords), std::end(reservedWords)));

// What is neither letter nor digit beyond ASCII: signs, punctuation, symbols, private and unpaired code units.
// Everything else counts as a letter, so that names of any script stay bare.
struct Range {
    char16_t first, last;
};
constexpr Range signs[] = {
    {0x0080, 0x00A9}, {0x00AB, 0x00B4}, {0x00B6, 0x00B9}, {0x00BB, 0x00BF}, {0x00D7, 0x00D7},
    {0x00F7, 0x00F7}, {0x2000, 0x206F}, {0x20A0, 0x20CF}, {0x2100, 0x2BFF}, {0x3000, 0x3004},
    {0x3008, 0x3020}, {0x3030, 0x3030}, {0x303D, 0x303D}, {0x309B, 0x309C}, {0x30A0, 0x30A0},
    {0x30FB, 0x30FB}, {0x3200, 0x33FF}, {0xD800, 0xF8FF}, {0xFE10, 0xFE6F}, {0xFEFF, 0xFF0F},
    {0xFF1A, 0xFF20}, {0xFF3B, 0xFF40}, {0xFF5B, 0xFF65}, {0xFFE0, 0xFFFF},
};

bool isDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

bool isReserved(TextView name) {
    return std::binary_search(std::begin(reservedWords), std::end(reservedWords), TextView(upperCase(name)));
}

} // namespace

bool isNameCharacter(char16_t character) {
    if (character < 0x80) {
        return isDigit(character) || character == u'_' || (character >= u'A' && character <= u'Z') ||
               (character >= u'a' && character <= u'z');
    }
    return std::none_of(std::begin(signs), std::end(signs), [character](const Range& range) {
        return character >= range.first && character <= range.last;
    });
}

Text printedName(TextView name, NamePlace place) {
    const bool inBrackets = name.size() >= 2 && name.front() == u'[' && name.back() == u']';
    if (inBrackets || name.empty()) {
        return Text(name);
    }
    const bool bare = !isDigit(name.front()) && std::all_of(name.begin(), name.end(), isNameCharacter) &&
                      !(place == NamePlace::Alone && isReserved(name));
    return bare ? Text(name) : u"[" + Text(name) + u"]";
}

Text printedParameter(TextView name) {
    if (name.find(u'[') != TextView::npos) {
        return Text(name);
    }
    if (name.find(u'!') == TextView::npos) {
        return printedName(name);
    }
    Text printed;
    for (std::size_t begin = 0; begin <= name.size();) {
        const std::size_t end = std::min(name.find(u'!', begin), name.size());
        printed +=
            (begin == 0 ? u"" : u"!") + printedName(name.substr(begin, end - begin), NamePlace::PartOfPath);
        begin = end + 1;
    }
    return printed;
}

Text withoutBrackets(TextView name) {
    if (name.size() >= 2 && name.front() == u'[' && name.back() == u']') {
        name = name.substr(1, name.size() - 2);
    }
    return Text(name);
}

Text nameKey(TextView name) {
    return upperCase(withoutBrackets(name));
}

} // namespace relvane::jet
