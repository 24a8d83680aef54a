-- expect source: {true, true, 0, 0, {}, {}, {""}, {}}
{"" = "", {} is {}, length of "", count of {}, (items of {}), words of "", paragraphs of "", characters of ""}
