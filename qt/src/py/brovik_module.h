#pragma once

/// Makes the built-in modules `brovik` and `_std_redirects` known to the interpreter that is yet to start.
/// Once or more often, before the first start of Python in this process.
void registerBuiltInModules();
