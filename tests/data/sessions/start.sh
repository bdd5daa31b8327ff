# What each session of prefs begins with: definitions of each type, a user's file in the home folder, and a few commands.
# A "[6]" behind the output of prefs is its exit status, where that is not 0.
cp "$HERE"/definitions.xml "$RESOURCES"/prefs.xml
prefs() { command prefs --user user.pref "$@" || echo "[$?]"; }
user() { (echo '<preferences>' && cat && echo '</preferences>') > user-pref.xml; }
define() { (echo '<preferences><category id="General">' && cat && echo '</category></preferences>') > "$RESOURCES/$1"; }
mkdir -p ".config/Brivant Animation"
explain() { prefs explain "$@" | sed "s:$RESOURCES/::g; s:$HOME/::g"; }
