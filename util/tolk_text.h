#pragma once

// Text and number helpers: trimming, comparing, hexadecimal, tag = value lines, printing of bytes.
//
// Unless said otherwise a function returns 0 for success and -1 for failure, texts are NUL-terminated and
// must not be null, and a failing function leaves its results alone. All functions are stateless and may run
// on any thread; character classes are those of the current C locale, and a character of 128 or more
// (negative as a signed char) belongs to no class. "White space" means isspace or iscntrl. "Folded" means
// that a letter's bit 0x20 is set, which makes ASCII capitals small.

#include <cstdio>

// The value, 0 to 15, of one hexadecimal digit of either case; -1 for any other character.
int Tolk_atox(char c);

// How many characters of a hexadecimal prefix the text begins with: 1 for "x" or "X", 2 for "0x" or "0X",
// else 0.
int Tolk_isHexHeader(const char* s);

// The length of the text, at most `max`; reads no further than that.
unsigned long Tolk_strnlen(const char* s, unsigned long max);

// A copy of `size` bytes in a block from malloc, which the caller frees with free; null without memory.
void* Tolk_memdup(const void* p, int size);

// Compares the folded texts as signed characters: -1, 0 or 1. A text that the other one continues is smaller.
int Tolk_stricmp(const char* a, const char* b);

// Compares at most `n` folded characters: the first difference, a's character minus b's as signed characters,
// or 0. A negative `n` compares without limit.
int Tolk_strnicmp(const char* a, const char* b, int n);

// The first character of the text that is not white space, or the terminating NUL.
const char* Tolk_SkipWhiteSpaces(const char* s);
char* Tolk_SkipWhiteSpaces(char* s);

// Overwrites the white space at the end of the text with NULs.
void Tolk_RemoveTrailingWhitespaces(char* s);

// Cuts white space off both ends, in place: returns the first character that stays.
char* Tolk_TrimWhiteSpaces(char* s);

// 1 if the text is one optional sign and then digits only (hexadecimal ones when `hex` is not 0), else 0.
// Deliberate: the empty text and a lone sign count as integers.
int Tolk_IsIntegerString(const char* s, int hex);

// Converts an integer text of radix 2, 10 or 16; any other radix fails. Kept as its callers know it:
// - in every radix the text may hold hexadecimal digits: "1a" in radix 10 is 1 * 10 + 10 = 20;
// - radix 10 takes at most 10 digits, radix 16 at most 8, radix 2 at most 8 (and then only "0" and "1");
// - in radix 10 a digit above 5 after a value of 429496729 or more prints "error" on standard output and
//   fails; every other overflow wraps around 2^32;
// - a text without a sign stores its 32 bits as they are ("4294967295" gives -1); with "-" it may reach
//   -2147483648, with "+" 2147483647; no digits at all give 0.
int Tolk_atoi(const char* s, int radix, int* out);

// Converts hexadecimal text to bytes, high nibble first. `*outLen` receives the number of bytes, half the
// length rounded up; with a null `out` that is all (the size query), else `out` has room for that many bytes.
// `hex` 0 admits decimal digits only. Deliberate: with an odd length the first digit is shifted into the byte
// that out[0] already holds (its low nibble becomes the high one); clear out[0] for the usual leading zero.
// `*outLen` is set even if `s` later fails for a sign; null `s` or `outLen` fail.
int Tolk_AsciiHexToBin(const char* s, unsigned char* out, int hex, int* outLen);

// The same into a new block from malloc, `*out`, which the caller frees with free; an odd length gets a
// leading zero nibble. With a null `out` only the size is told.
int Tolk_AsciiHexToNewByteArray(const char* s, unsigned char** out, int* outLen);

// Converts pairs of hexadecimal digits to bytes: returns their number. 0 for a null pointer, an odd length,
// more than `max` bytes, or a character that is no such digit (the bytes before it stay written).
unsigned long Tolk_AsciiToHex(const char* s, unsigned char* out, unsigned long max);

// For a line "tag = value" (white space before the tag, and around "=" after one space or none; the tag in
// any case): the value's first character inside the line, else null. The value's end is not trimmed. A tab
// directly after the tag is no match.
const char* Tolk_ParseTagValuePair(const char* line, const char* tag);
char* Tolk_ParseTagValuePair(char* line, const char* tag);

// The value of such a line as a truth value, in any case: "1" or "true" stores 1, "0" or "false" stores 0;
// anything else fails, trailing white space included.
int Tolk_ParseTagValuePairAsBoolean(const char* line, const char* tag, unsigned char* out);

// The value of such a line as Tolk_atoi reads it in radix 10.
int Tolk_ParseTagValuePairAsInteger(const char* line, const char* tag, int* out);

// Writes the low `bits` bits of the number at `data` (least significant byte first) as "0" and "1", most
// significant first, and returns `out`. A `group` above 0 sets a space after every group of that many bits,
// counted from the low end, the last group included. `out` has room for bits + ceil(bits / group) + 1.
char* Tolk_FormatAsBinary(const void* data, int bits, int group, char* out);

// Prints bytes as two hexadecimal digits each, `perLine` (above 0) a line. With a title, first a line
// "title (len bytes @ address):", and each line of bytes begins with its offset.
void Tolk_PrintArrayToStream(const char* title, const unsigned char* data, int len, int perLine,
                             FILE* stream);

// The same on standard output.
void Tolk_PrintArray(const char* title, const unsigned char* data, int len, int perLine);

// Widens `*count` elements into `dst`, which has room for `*dstCount`, and stores their number there. Fails,
// having copied nothing, when they do not fit.
int Tolk_CopyArrayUInt32(const unsigned int* src, const unsigned int* count, unsigned long* dst,
                         unsigned long* dstCount);
