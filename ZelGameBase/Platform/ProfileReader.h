// The Windows private-profile reader's rules, kept in one place so that the
// POSIX emulation can be compared line by line with the real one.
//
// - section and key names match without regard to ASCII case;
// - blanks are ignored before "[", inside the brackets, around key and value;
// - a section name ends at the first "]"; a "[" line without "]" is an
//   entry line;
// - a line whose first non-blank character is ";" is a comment;
// - only the first of two same-named sections is searched; the first
//   occurrence of a key wins; keys before the first section are unreachable;
// - one matching pair of outer quotes is removed from the value;
// - CR-LF, LF and a lone CR all end a line.
#pragma once

#include <cstddef>
#include <string>

// Finds the value of szKey in [szSection]. False when absent.
bool ProfileFindValue(const char* pText, std::size_t nLength, const char* szSection, const char* szKey,
                      std::string& strValue);

// Converts a value as Windows' integer parser with base 0: characters up to
// 0x20 skipped, one sign, "0x"/"0o"/"0b" prefixes (lower case only), digits
// accumulated into an unsigned 32-bit number that wraps, stop at the first
// non-digit; a negative value is its two's complement. An empty value gives
// nDefault, a non-empty value without digits 0.
unsigned ProfileParseInt(const std::string& strValue, int nDefault);

// The whole GetPrivateProfileIntA over a file image.
unsigned ProfileGetInt(const char* pText, std::size_t nLength, const char* szSection, const char* szKey,
                       int nDefault);
