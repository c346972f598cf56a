// The server's clock.
#ifndef SERVER_GETCURRENTTIMESTAMP_H_
#define SERVER_GETCURRENTTIMESTAMP_H_

#include <string>

inline std::string getCurrentTimeStamp(int) { return "by the server's clock"; }

#endif  // SERVER_GETCURRENTTIMESTAMP_H_
