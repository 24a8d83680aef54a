-- expect: Alba
-- expect events: coregetd
tell application "Garden" to return «property pnam» of «class plnt» 2 of bed 1
