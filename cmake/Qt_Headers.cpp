// Nothing but a unit for the precompiled headers to be made with.
