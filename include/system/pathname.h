// Pathname: the name of a file as a text with "/" between its components.
//
// A path is a String_t and is copied and shared like one; it stays as it was written until
// Collapse or Abs is called. What an `ext` or a `suffix` stands for carries its own dot (".o").
// The members that ask for a home directory use the process-wide password database: one thread at a
// time, and so does everything that depends on the current directory.
#ifndef KORBASE_SYSTEM_PATHNAME_H
#define KORBASE_SYSTEM_PATHNAME_H

#include <korbase_api.h>
#include <text/string.h>

#include <generic/tolist>

class KORBASE_API Pathname : public String_t {
public:
    // The null path.
    Pathname() noexcept = default;
    // A copy of `name`; null gives the null path.
    explicit Pathname(char const* name) : String_t(name) {}
    // `name`, with `ext` behind it if it has no extension.
    Pathname(char const* name, char const* ext);

    Pathname(Pathname const&) = default;
    Pathname(Pathname&&) noexcept = default;
    Pathname& operator=(Pathname const&) = default;
    Pathname& operator=(Pathname&&) noexcept = default;
    Pathname& operator=(String_t const& name);
    Pathname& operator=(char const* name);

    // The current directory, and `name` in it. The null path where it is unknown or longer than
    // 4095 characters: then `name` alone.
    static Pathname Cwd();
    static Pathname Cwd(char const* name);
    // The home directory of the real user, and `name` in it. The null path for a user without an
    // entry: then `name` alone.
    static Pathname Home();
    static Pathname Home(char const* name);

    // 1 if the path begins with "/" or "~", else 0.
    int IsAbs() const;
    // 1 if the path ends with `ext` and has something in front of it, else 0; 0 for null.
    int HasExt(char const* ext) const;

    // What is in front of the last "/"; "." without one. Kept: "" for "/x", not "/".
    String_t Dir() const;
    // What is behind the last "/", without `suffix` if it ends with that; null for the null path.
    String_t Leaf(char const* suffix = nullptr) const;
    // All of it, without `suffix` if it ends with that; null for the null path.
    String_t Base(char const* suffix = nullptr) const;

    // The extension begins at the last "." of the last component; a "." that is the first character
    // of the whole path begins none. Null paths and null extensions change nothing.

    // Adds `ext` unless the path ends with it.
    Pathname& SetExt(char const* ext);
    // Makes `ext` the extension, in place of another one.
    Pathname& ChExt(char const* ext);
    // Adds `ext` if there is no extension.
    Pathname& ChExtOpt(char const* ext);

    // Puts `name` behind the path, or in front of it, with a "/" between them. No "/" comes next to
    // an empty or null path, nor behind the path "/". A null `name` changes nothing.
    Pathname& Append(char const* name);
    Pathname& Insert(char const* name);

    // Turns a name with a drive letter ("C:\Dir\F") or backslashes into one of this system
    // ("/c:/dir/f"): letters become lower case, backslashes "/". Others stay.
    // Kept: copies see the new characters too, though not the "/" that are added.
    Pathname& Transform();

    // Takes out what does not lead anywhere: "." and doubled or last "/", and ".." together with
    // the component in front of it (".." under the root goes alone). Symbolic links are not looked
    // at. A path that begins with "~" is expanded as by Abs.
    // Kept: the null path, not ".", when nothing is left ("a/..").
    Pathname& Collapse();

    // Puts the current directory in front of a relative path or replaces "~" or "~user" by the home
    // directory, then collapses. Null and empty paths stay, as does "~user" for an unknown user.
    // Where the current directory is unknown, the path is only collapsed.
    Pathname& Abs();
    // The same, then applies the first of the rules that matches. Kept: the result is not collapsed
    // again, and a rule that is no regular expression ends the search.
    Pathname& Abs(TOList<String_t> const& substs);

    // Applies one rule "#PATTERN#REPLACEMENT#", where # is any character and the last one may be
    // missing. The first match of the basic regular expression and, kept, all that is in front of
    // it are replaced. "^" and "$" do not match at the ends of the path.
    // Returns 0 if it matched, else the result of regexec, 1 for an empty rule. Kept: a pattern
    // that is no regular expression is reported on std::cerr and gives 0.
    int ApplySubst(String_t subst);

    // Appends the paths that match, in the order of the platform's glob, to `out`; `flags` are
    // those of glob without GLOB_ALTDIRFUNC. Returns how many there are or minus the result of glob
    // (-GLOB_NOMATCH for none). The list is unchanged on failure.
    static int Glob(Pathname const& pattern, int flags, TOList<String_t>& out);

    // Creates the directory and those that lead to it. Returns 0, also if they were there, or a
    // negative errno value, -EINVAL for a null or empty path. What was created before a failure
    // stays. Kept: an existing file in place of the last directory is no failure, and "~user" for
    // an unknown user is taken as a name below the root.
    static int Mkdir(Pathname path, unsigned int mode);
    // Creates the directories that are to hold `path`. Kept: -EINVAL for "/x".
    static int MkLeadingDirs(Pathname path, unsigned int mode);

private:
    Pathname& CollapseComponents();
};

#endif
