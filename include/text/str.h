/* The plain functions on texts, all of them. */
#ifndef KORBASE_TEXT_STR_H
#define KORBASE_TEXT_STR_H

#include <text/str_accumulator.h>
#include <text/str_columns.h>
#include <text/str_engineering.h>
#include <text/str_field.h>
#include <text/str_integer.h>
#include <text/str_number.h>
#include <text/str_search.h>
#include <text/str_text.h>

#endif
