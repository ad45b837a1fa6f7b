-- SPDX-License-Identifier: LicenseRef-SnmpSubAgent
--
-- Pages refer to each other as files of the source tree, so that they can be
-- read there; in the site they lie side by side.
function Link(link)
  if not link.target:find('://') then
    link.target = link.target
      :gsub('^[^#]*/', '')
      :gsub('^README%.md', 'index.html')
      :gsub('%.md', '.html')
  end
  return link
end
