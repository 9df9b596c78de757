#pragma once

// Prints the quakes as a table, in the order they will be shown.
int listQuakes();
