-- expect error: -2741
«data utxt0G»
