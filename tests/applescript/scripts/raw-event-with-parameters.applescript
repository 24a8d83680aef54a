-- expect: watered with 3.000000
tell application "Garden" to return «event GardWatr» given «class Litr»:3
