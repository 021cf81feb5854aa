// A core header.
