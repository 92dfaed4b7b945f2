-- Drives Neovim's LSP client against fplc-lsp. Exits 0 when every check holds,
-- 1 with a message on the first that fails.
local lsp_binary = os.getenv('FPLC_LSP')
local definition = os.getenv('FPLC_DEFINITION')

local function fail(text)
  io.stderr:write('neovim e2e: ' .. text .. '\n')
  os.exit(1)
end

local function check(condition, text)
  if not condition then fail(text) end
end

-- The first line (from 0) whose text matches `pattern`, and the match's column.
local function find_line(pattern)
  for i, line in ipairs(vim.api.nvim_buf_get_lines(0, 0, -1, false)) do
    local col = line:find(pattern)
    if col then return i - 1, col - 1 end
  end
  fail('no line matches ' .. pattern)
end

vim.cmd('edit ' .. vim.fn.fnameescape(definition))
local buf = vim.api.nvim_get_current_buf()

local published = 0
local config = {
  name = 'fplc-lsp',
  cmd = { lsp_binary },
  root_dir = vim.fn.fnamemodify(definition, ':h'),
  flags = { debounce_text_changes = 50 },
  handlers = {
    ['textDocument/publishDiagnostics'] = function(err, result, ctx, cfg)
      published = published + 1
      vim.lsp.diagnostic.on_publish_diagnostics(err, result, ctx, cfg)
    end,
  },
}
-- vim.lsp.start arrived in Neovim 0.8; Debian's 0.7 has start_client.
local client_id
if vim.lsp.start then
  client_id = vim.lsp.start(config)
else
  client_id = vim.lsp.start_client(config)
  vim.lsp.buf_attach_client(buf, client_id)
end
check(client_id, 'the server did not start')

check(vim.wait(20000, function() return published > 0 end, 20), 'no diagnostics published')
check(#vim.diagnostic.get(buf) == 0, 'the example has diagnostics: ' ..
  vim.inspect(vim.diagnostic.get(buf)))

-- A typo in a command keyword: the fault at its line and column.
local tz_line = find_line('^TZ 3001 ')
local original = vim.api.nvim_buf_get_lines(buf, tz_line, tz_line + 1, false)[1]
vim.api.nvim_buf_set_lines(buf, tz_line, tz_line + 1, false, { '  TX' .. original:sub(3) })
check(vim.wait(20000, function() return #vim.diagnostic.get(buf) > 0 end, 20),
  'no diagnostic for the typo')
local d = vim.diagnostic.get(buf)[1]
check(d.lnum == tz_line and d.col == 2 and d.end_col == 4,
  string.format('typo diagnostic at %d:%d-%d, expected %d:2-4', d.lnum, d.col, d.end_col, tz_line))
check(d.message == "Unbekanntes Kommando: 'TX'.", 'typo message: ' .. d.message)
check(d.severity == vim.diagnostic.severity.ERROR, 'typo severity ' .. tostring(d.severity))

vim.api.nvim_buf_set_lines(buf, tz_line, tz_line + 1, false, { original })
check(vim.wait(20000, function() return #vim.diagnostic.get(buf) == 0 end, 20),
  'the diagnostic stays after the fix')

-- From a run name to its ZL line.
local zl_line = find_line('^ZL RB_Hin ')
local set_line, set_col = find_line('RB_Hin$')
vim.api.nvim_win_set_cursor(0, { set_line + 1, set_col + 2 })
vim.lsp.buf.definition()
check(vim.wait(10000, function() return vim.api.nvim_win_get_cursor(0)[1] == zl_line + 1 end, 20),
  'definition did not jump to line ' .. (zl_line + 1) .. ', cursor at ' ..
  vim.api.nvim_win_get_cursor(0)[1])

-- A hover on the train command: its content, and the window Neovim shows.
vim.api.nvim_win_set_cursor(0, { tz_line + 1, 0 })
local params = vim.lsp.util.make_position_params()
local responses = vim.lsp.buf_request_sync(buf, 'textDocument/hover', params, 10000) or {}
local shown
for _, response in pairs(responses) do
  if response.result then shown = response.result.contents.value end
end
check(shown and shown:find('Zug 3001: Mo, Di, Mi, Do und Fr', 1, true),
  'hover text: ' .. tostring(shown))

local function floating_windows()
  local n = 0
  for _, win in ipairs(vim.api.nvim_list_wins()) do
    if vim.api.nvim_win_get_config(win).relative ~= '' then n = n + 1 end
  end
  return n
end
vim.lsp.buf.hover()
check(vim.wait(10000, function() return floating_windows() > 0 end, 20), 'no hover window')

vim.lsp.stop_client(client_id)
io.stdout:write('neovim e2e: ok\n')
os.exit(0)
