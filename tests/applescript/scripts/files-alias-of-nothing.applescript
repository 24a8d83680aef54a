-- expect error: -43
-- expect message: File Macintosh HD:none wasn’t found.
POSIX file "/none" as alias
