-- expect: true
return (do shell script "lines" without altering line endings) ends with linefeed
