#pragma once

/// The rules by which configured texts become literal values. Numbers never fail: what is no number gives 0, and text
/// behind a number is ignored. White space before a number is skipped, Unicode's too; digits are ASCII. Only "true" and
/// "false" have to be exact.
namespace Zorbel::Literal {

/// Throws: `CException` when the text is neither "true" nor "false".
bool ToBool(const wchar_t* text);

/// The first byte of the narrow text; 0 for the empty one.
char ToChar(const wchar_t* text);

/// Decimal, clamped to 32 bits.
int ToInt(const wchar_t* text);

/// Decimal, octal behind "0" or hexadecimal behind "0x", clamped to 32 bits; a "-" negates modulo 2^32.
unsigned int ToUnsigned(const wchar_t* text);

/// In C notation, whatever the locale; infinite when too large, 0 when too small.
double ToDouble(const wchar_t* text);

}  // namespace Zorbel::Literal
