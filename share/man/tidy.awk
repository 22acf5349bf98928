# Pages of scdoc have paragraphs that mandoc warns of: before and behind a heading, and at the end of an indented text. Those
# at headings go, and the others begin behind the indented text.
/^\.P$/ { is_owed = !is_begun; next }
/^\.RE$/ { print; next }
{
    if (is_owed && !/^\.(SH|SS|TH)/) print ".P"
    is_owed = 0
    is_begun = /^\.(SH|SS|TH)/
    print
}
