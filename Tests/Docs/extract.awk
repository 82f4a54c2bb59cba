# Writes the code blocks of a Markdown file below the folder `out`, named after the file and numbered:
#   cpp                  a source of its own; "cpp more" goes on with the one before
#   xml                  a document; "xml arguments" is a bean's constructor-arg, "xml mistake" must not load
#   text                 what a program prints
function open_block(kind, word) {
  if (kind == "cpp" && word == "more") return out "/" name "-" count["cpp"] ".cpp"
  ++count[kind word]
  if (kind == "cpp") return out "/" name "-" count["cpp"] ".cpp"
  if (kind == "xml") return out "/" (word == "mistake" ? "mistakes" : "documents") "/" name word "-" count[kind word] ".xml"
  if (kind == "text") return out "/" name "-" count["text"] ".txt"
  return ""
}
BEGIN {
  head = "<zorbel><library path='motion'><beans><bean name='b' class='C'><constructor-arg>"
  tail = "</constructor-arg></bean></beans></library></zorbel>"
}
/^```/ && !inside { inside = 1; kind = substr($1, 4); word = $2; file = open_block(kind, word)
  if (word == "arguments") print head > file
  next }
/^```/ { inside = 0; if (word == "arguments") print tail > file; next }
inside && file != "" { print > file }
