// How the program and orvane-fetch talk. The request is the arguments: the URL, the most bytes of the body,
// the patience in milliseconds. The answer is the file that is the fetcher's standard output: a status as
// `std::int32_t` in this machine's order, and what belongs to it. The status is written last.
#pragma once

#include <cstdint>

namespace orvane::FetchProtocol {

using Status = std::int32_t;

/// The fetcher has ended before it had an answer. Nothing belongs to it.
inline constexpr Status unfinished = 0;
/// There is no response; the reason follows, in UTF-8.
inline constexpr Status failed = -1;
/// The server was silent for too long, sent too much, or the address isn't a secure one. Nothing follows.
inline constexpr Status silent = -2;
inline constexpr Status tooLong = -3;
inline constexpr Status insecure = -4;
// Every other status is the server's, and the body of its response follows.

/// Names a file with the one authority that is trusted, for tests. The fetcher then reaches no other host
/// than this machine and a proxy on it.
inline constexpr const char* testAuthorityVariable = "ORVANE_TEST_AUTHORITY";

} // namespace orvane::FetchProtocol
