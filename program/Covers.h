#pragma once

struct Options;

// Runs the first process, which covers every monitor by others, until a signal, or user input to one of them,
// ends them all. Returns the exit status: 1, and nothing is covered, while another program has grabbed the
// keyboard.
int runCovers(const Options& options);
