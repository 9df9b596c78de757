#pragma once

// Prints the quakes as a table, in the order in which they will be shown.
int listQuakes();
