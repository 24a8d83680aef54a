-- expect source: 1
#!/usr/bin/osascript
1
