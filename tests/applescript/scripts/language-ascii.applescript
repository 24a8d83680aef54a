-- expect source: {"A", 65, "€", 65, {65, 66}, "Hi", "é"}
{ASCII character 65, ASCII number "A", character id 8364, id of "A", id of "AB", string id {72, 105}, text id 233}
