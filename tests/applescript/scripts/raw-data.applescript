-- expect source: {"Hi", "é", "🌱"}
{«data utxt00480069», «data utf8C3A9», «data utxtD83CDF31» as Unicode text}
