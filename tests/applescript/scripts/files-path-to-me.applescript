-- expect source: {"/Users/me/script.applescript", "Macintosh HD:Users:me:Library:Application Support:", "/Library/", "Macintosh HD:tmp:"}
{POSIX path of (path to me), path to application support folder from user domain as text, POSIX path of (path to library folder from local domain), path to temporary items as string}
