/// @file
/// The server's time stamp.
#ifndef PLATFORM_GETCURRENTTIMESTAMP_H_
#define PLATFORM_GETCURRENTTIMESTAMP_H_

#include <string>

/// The current local date and time in ISO 8601 form with seconds and offset,
/// such as "2024-05-31T14:03:09+02:00". `form` selects the form; 1 is the only
/// one there is, and any other value gives the same.
///
/// When the environment variable SOURCE_DATE_EPOCH holds a decimal count of
/// seconds since 1970-01-01T00:00:00Z, that time is given instead, in UTC, so
/// that output can be reproduced. Any other content of the variable, a year of
/// more than four digits included, is ignored.
///
/// Safe to call from several threads, as long as none changes the environment.
std::string getCurrentTimeStamp(int form);

#endif  // PLATFORM_GETCURRENTTIMESTAMP_H_
