message(FATAL_ERROR "expected the library's own file, found the server's")
